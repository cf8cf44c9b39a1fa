#include "platform/ical/module/ComponentValues.h"

#include <QByteArray>

namespace tarnwick {
namespace {

constexpr qsizetype kMostTitle = 500;
constexpr qsizetype kMostNotes = 16 * 1024;
constexpr qsizetype kMostAddress = 4096;
constexpr qsizetype kMostConferences = 8;

const char* textOf(icalproperty* property) {
  icalvalue* value = property ? icalproperty_get_value(property) : nullptr;
  if (!value) return nullptr;
  switch (icalvalue_isa(value)) {
    case ICAL_TEXT_VALUE:
      return icalvalue_get_text(value);
    case ICAL_URI_VALUE:
      return icalvalue_get_uri(value);
    case ICAL_X_VALUE:
      return icalvalue_get_x(value);
    default:
      return nullptr;
  }
}

bool isConference(icalproperty* property) {
  const char* name = icalproperty_isa(property) == ICAL_X_PROPERTY ? icalproperty_get_x_name(property) : nullptr;
  if (!name) return icalproperty_isa(property) == ICAL_CONFERENCE_PROPERTY;
  constexpr const char* kNames[] = {"X-GOOGLE-CONFERENCE", "X-MICROSOFT-SKYPETEAMSMEETINGURL",
                                    "X-MICROSOFT-ONLINEMEETINGCONFLINK", "X-ZOOM-MEETING-URL"};
  return std::any_of(std::begin(kNames), std::end(kNames),
                     [name](const char* known) { return qstricmp(name, known) == 0; });
}

}  // namespace

QString ComponentValues::text(icalcomponent* component, icalproperty_kind kind, qsizetype limit) {
  const char* found = textOf(icalcomponent_get_first_property(component, kind));
  if (!found) return {};
  // Cut before it is decoded: a megabyte of notes is not worth the memory.
  const QByteArrayView bytes(found);
  QString text = QString::fromUtf8(bytes.first(std::min(bytes.size(), limit * 4)));
  text.truncate(limit);
  return text.trimmed();
}

QStringList ComponentValues::conferences(icalcomponent* component) {
  QStringList found;
  for (icalproperty* property = icalcomponent_get_first_property(component, ICAL_ANY_PROPERTY);
       property && found.size() < kMostConferences;
       property = icalcomponent_get_next_property(component, ICAL_ANY_PROPERTY)) {
    if (!isConference(property)) continue;
    const char* address = textOf(property);
    if (address) found.append(QString::fromUtf8(address, qstrnlen(address, kMostAddress)));
  }
  return found;
}

icalproperty_status ComponentValues::status(icalcomponent* component) {
  icalproperty* property = icalcomponent_get_first_property(component, ICAL_STATUS_PROPERTY);
  return property ? icalproperty_get_status(property) : ICAL_STATUS_NONE;
}

std::optional<CalendarTime> ComponentValues::time(icalcomponent* component, icalproperty_kind kind,
                                                  CalendarZones& zones) {
  icalproperty* property = icalcomponent_get_first_property(component, kind);
  icalvalue* value = property ? icalproperty_get_value(property) : nullptr;
  if (!value) return std::nullopt;
  if (icalvalue_isa(value) == ICAL_DATE_VALUE) return zones.time(property, icalvalue_get_date(value));
  if (icalvalue_isa(value) == ICAL_DATETIMEDATE_VALUE) return zones.time(property, icalvalue_get_datetimedate(value));
  if (icalvalue_isa(value) != ICAL_DATETIME_VALUE) return std::nullopt;
  return zones.time(property, icalvalue_get_datetime(value));
}

std::optional<qint64> ComponentValues::duration(icalcomponent* component) {
  icalproperty* property = icalcomponent_get_first_property(component, ICAL_DURATION_PROPERTY);
  if (!property || !icalproperty_get_value(property)) return std::nullopt;
  const icaldurationtype duration = icalproperty_get_duration(property);
  if (duration.is_neg) return std::nullopt;
  return qint64{duration.weeks} * 604800 + qint64{duration.days} * 86400 + qint64{duration.hours} * 3600 +
         qint64{duration.minutes} * 60 + qint64{duration.seconds};
}

CalendarEvent ComponentValues::event(icalcomponent* component) {
  CalendarEvent event;
  event.uid = text(component, ICAL_UID_PROPERTY, kMostTitle);
  event.title = text(component, ICAL_SUMMARY_PROPERTY, kMostTitle).simplified();
  event.location = text(component, ICAL_LOCATION_PROPERTY, kMostAddress);
  event.notes = text(component, ICAL_DESCRIPTION_PROPERTY, kMostNotes);
  event.url = text(component, ICAL_URL_PROPERTY, kMostAddress);
  event.conferences = conferences(component);
  event.attendees = icalcomponent_count_properties(component, ICAL_ATTENDEE_PROPERTY);
  event.tentative = status(component) == ICAL_STATUS_TENTATIVE;
  return event;
}

Reminder ComponentValues::reminder(icalcomponent* component, const std::string& uid, CalendarZones& zones) {
  Reminder reminder;
  reminder.uid = QString::fromUtf8(QByteArray::fromStdString(uid).trimmed());
  reminder.title = text(component, ICAL_SUMMARY_PROPERTY, kMostTitle).simplified();
  if (icalproperty* priority = icalcomponent_get_first_property(component, ICAL_PRIORITY_PROPERTY)) {
    reminder.priority = std::clamp(icalproperty_get_priority(priority), 0, 9);
  }
  const auto completedAt = time(component, ICAL_COMPLETED_PROPERTY, zones);
  const icalproperty_status state = status(component);
  reminder.completed = state == ICAL_STATUS_COMPLETED || (state == ICAL_STATUS_NONE && completedAt);
  if (reminder.completed && completedAt) reminder.completedAt = localTime(completedAt->utc());
  return reminder;
}

}  // namespace tarnwick
