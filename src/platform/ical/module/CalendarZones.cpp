#include "platform/ical/module/CalendarZones.h"

#include <QDateTime>
#include <optional>

namespace tarnwick {
namespace {

constexpr qint64 kSteady = kDay * 365 * 1000;  // of a zone that knows no changes
constexpr qint64 kEpochDay = 2440588;          // of the first of January 1970, in Julian days

struct FreeZone {
  void operator()(icaltimezone* zone) const { icaltimezone_free(zone, 1); }
};

/// The line of a zone's text that names it, folded or not.
QByteArray nameOf(const QByteArray& zoneText) {
  const auto at = zoneText.indexOf("\nTZID");
  const auto colon = zoneText.indexOf(':', at);
  if (at < 0 || colon < 0) return {};
  const auto end = zoneText.indexOf('\n', colon);
  return zoneText.mid(colon + 1, end - colon - 1).trimmed();
}

}  // namespace

UtcSeconds CalendarZone::utc(WallSeconds wall) const {
  if (definition_) {
    icaltimetype value = CalendarZones::valueOf(wall, false);
    int isDaylight = 0;
    return wall - icaltimezone_get_utc_offset(definition_.get(), &value, &isDaylight);
  }
  // The offset that holds at that clock time; one that the clock leaps over is read with the offset before the leap.
  const int before = offsetAt(wall - kDay);
  const int first = offsetAt(wall - before);
  if (first == before) return wall - before;
  const int second = offsetAt(wall - first);
  return wall - (second == first ? first : before);
}

WallSeconds CalendarZone::wall(UtcSeconds utc) const {
  if (definition_) {
    icaltimetype value = CalendarZones::valueOf(utc, false);
    int isDaylight = 0;
    return utc + icaltimezone_get_utc_offset_of_utc_time(definition_.get(), &value, &isDaylight);
  }
  return utc + offsetAt(utc);
}

/// The clock changes seldom and calendars ask for times that lie close together.
int CalendarZone::offsetAt(UtcSeconds utc) const {
  if (utc >= span_.from && utc < span_.until) return span_.offset;
  const auto moment = QDateTime::fromSecsSinceEpoch(utc, Qt::UTC);
  span_ = {.from = utc, .until = utc + 1, .offset = zone_.offsetFromUtc(moment)};
  if (!zone_.hasTransitions()) {
    span_ = {.from = utc - kSteady, .until = utc + kSteady, .offset = span_.offset};
    return span_.offset;
  }
  const auto last = zone_.previousTransition(moment);
  const auto next = zone_.nextTransition(moment);
  if (last.atUtc.isValid()) span_.from = last.atUtc.toSecsSinceEpoch();
  if (next.atUtc.isValid()) span_.until = next.atUtc.toSecsSinceEpoch();
  return span_.offset;
}

SystemZones::SystemZones()
    : local_(std::make_shared<CalendarZone>(QTimeZone::systemTimeZone())),
      universal_(std::make_shared<CalendarZone>(QTimeZone::utc())) {}

std::shared_ptr<CalendarZone> SystemZones::named(const QByteArray& name) {
  const auto known = zones_.constFind(name);
  if (known != zones_.constEnd()) return *known;
  const QTimeZone zone = name.contains("..") ? QTimeZone() : QTimeZone(name);
  return *zones_.insert(name, zone.isValid() ? std::make_shared<CalendarZone>(zone) : nullptr);
}

void CalendarZones::add(std::string_view zoneText) {
  const QByteArray text(zoneText.data(), static_cast<qsizetype>(zoneText.size()));
  definitions_.insert(nameOf(text), text);
}

std::optional<CalendarTime> CalendarZones::time(icalproperty* property, const icaltimetype& value) {
  const auto wall = wallOf(value);
  if (!wall) return std::nullopt;
  CalendarTime time{.wall = *wall, .zone = system_.local().get(), .isDate = value.is_date != 0};
  if (time.isDate) return time;
  if (icaltime_is_utc(value)) {
    time.isUtc = true;
    time.zone = system_.universal().get();
    return time;
  }
  icalparameter* parameter = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
  const char* name = parameter ? icalparameter_get_tzid(parameter) : nullptr;
  if (name) time.zone = &named(name);
  return time;
}

const CalendarZone& CalendarZones::named(const QByteArray& name) {
  const auto known = zones_.constFind(name);
  if (known != zones_.constEnd()) return **known;
  const auto found = find(name);
  return **zones_.insert(name, found ? found : system_.local());
}

std::shared_ptr<CalendarZone> CalendarZones::find(const QByteArray& name) {
  // Programs put a path of their own before the system's name ("/example.org/20240101/Europe/Berlin").
  for (QByteArray rest = name; !rest.isEmpty();) {
    if (const auto zone = system_.named(rest)) return zone;
    if (!name.startsWith('/')) break;
    const auto slash = rest.indexOf('/');
    rest = slash < 0 ? QByteArray() : rest.mid(slash + 1);
  }
  if (const auto definition = definitions_.constFind(name); definition != definitions_.constEnd()) {
    icalcomponent* component = icalparser_parse_string(definition->constData());
    const std::shared_ptr<icaltimezone> zone(icaltimezone_new(), FreeZone());
    // The zone owns the component from here on, if it takes it.
    if (component && icaltimezone_set_component(zone.get(), component)) return std::make_shared<CalendarZone>(zone);
    if (component) icalcomponent_free(component);
  }
  const QByteArray translated = QTimeZone::windowsIdToDefaultIanaId(name);
  return translated.isEmpty() ? nullptr : system_.named(translated);
}

std::optional<WallSeconds> CalendarZones::wallOf(const icaltimetype& value) {
  // The library passes on what it read: a month 24 has no day that could be counted.
  if (icaltime_is_null_time(value) || !QDate::isValid(value.year, value.month, value.day)) return std::nullopt;
  const qint64 days = QDate(value.year, value.month, value.day).toJulianDay() - kEpochDay;
  if (value.is_date) return days * kDay;
  return days * kDay + value.hour * 3600 + value.minute * 60 + value.second;
}

icaltimetype CalendarZones::valueOf(WallSeconds wall, bool isDate) {
  const qint64 days = wall >= 0 ? wall / kDay : -((kDay - 1 - wall) / kDay);
  const QDate date = QDate::fromJulianDay(days + kEpochDay);
  const int seconds = static_cast<int>(wall - days * kDay);
  icaltimetype value = ICALTIMETYPE_INITIALIZER;
  value.year = date.year();
  value.month = date.month();
  value.day = date.day();
  value.is_date = isDate ? 1 : 0;
  if (!isDate) {
    value.hour = seconds / 3600;
    value.minute = seconds / 60 % 60;
    value.second = seconds % 60;
  }
  return value;
}

}  // namespace tarnwick
