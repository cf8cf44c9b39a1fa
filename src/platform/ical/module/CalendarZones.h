#pragma once

#include <libical/ical.h>

#include <QByteArray>
#include <QHash>
#include <QTimeZone>
#include <memory>
#include <string_view>

namespace tarnwick {

/// Clock time without a zone, in seconds as if it were universal time.
using WallSeconds = qint64;
using UtcSeconds = qint64;

/// A day of the calendar, in seconds.
constexpr qint64 kDay = 86400;

/// A zone as a calendar means it: one that this system knows by name, or one that the calendar defines itself.
class CalendarZone {
 public:
  explicit CalendarZone(QTimeZone zone) : zone_(std::move(zone)) {}
  explicit CalendarZone(std::shared_ptr<icaltimezone> definition) : definition_(std::move(definition)) {}

  UtcSeconds utc(WallSeconds wall) const;
  WallSeconds wall(UtcSeconds utc) const;

 private:
  /// A time without a change of the clock.
  struct Span {
    UtcSeconds from = 0;
    UtcSeconds until = 0;
    int offset = 0;
  };

  int offsetAt(UtcSeconds utc) const;

  QTimeZone zone_;
  std::shared_ptr<icaltimezone> definition_;
  mutable Span span_;
};

/// A moment as a calendar gives it.
struct CalendarTime {
  WallSeconds wall = 0;
  const CalendarZone* zone = nullptr;
  bool isDate = false;
  bool isUtc = false;

  UtcSeconds utc() const { return zone->utc(wall); }
};

/// The zones that this system knows, kept from text to text.
class SystemZones {
 public:
  SystemZones();

  const std::shared_ptr<CalendarZone>& local() const { return local_; }
  const std::shared_ptr<CalendarZone>& universal() const { return universal_; }
  /// Null for a name that the system does not know.
  std::shared_ptr<CalendarZone> named(const QByteArray& name);

 private:
  std::shared_ptr<CalendarZone> local_;
  std::shared_ptr<CalendarZone> universal_;
  QHash<QByteArray, std::shared_ptr<CalendarZone>> zones_;
};

/// The zones of one text.
class CalendarZones {
 public:
  explicit CalendarZones(SystemZones& system) : system_(system) {}

  /// A zone that the text defines.
  void add(std::string_view zoneText);

  /// The value of a date property; null without one. An unknown zone counts as the user's own.
  std::optional<CalendarTime> time(icalproperty* property, const icaltimetype& value);

  /// Absent where the value is none, or names a day that no calendar has.
  static std::optional<WallSeconds> wallOf(const icaltimetype& value);
  /// Without a zone.
  static icaltimetype valueOf(WallSeconds wall, bool isDate);

 private:
  const CalendarZone& named(const QByteArray& name);
  std::shared_ptr<CalendarZone> find(const QByteArray& name);

  SystemZones& system_;
  QHash<QByteArray, QByteArray> definitions_;
  QHash<QByteArray, std::shared_ptr<CalendarZone>> zones_;
};

}  // namespace tarnwick
