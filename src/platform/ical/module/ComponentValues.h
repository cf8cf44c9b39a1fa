#pragma once

#include <libical/ical.h>

#include <QString>
#include <QStringList>
#include <memory>
#include <string>

#include "calendar/ports/CalendarRecords.h"
#include "platform/ical/module/CalendarZones.h"

namespace tarnwick {

struct FreeComponent {
  void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};
using Component = std::unique_ptr<icalcomponent, FreeComponent>;

/// The contents of one component, as plain values.
struct ComponentValues {
  /// Of a text property, freed of its escapes and cut at `limit` characters.
  static QString text(icalcomponent* component, icalproperty_kind kind, qsizetype limit);
  /// Addresses that a calendar gives for joining; every program has a property of its own for it.
  static QStringList conferences(icalcomponent* component);
  static icalproperty_status status(icalcomponent* component);
  static std::optional<CalendarTime> time(icalcomponent* component, icalproperty_kind kind, CalendarZones& zones);
  /// Seconds; none without a duration.
  static std::optional<qint64> duration(icalcomponent* component);
  static QDateTime localTime(UtcSeconds seconds) { return QDateTime::fromSecsSinceEpoch(seconds); }

  /// All but when it happens.
  static CalendarEvent event(icalcomponent* component);
  static Reminder reminder(icalcomponent* component, const std::string& uid, CalendarZones& zones);
};

}  // namespace tarnwick
