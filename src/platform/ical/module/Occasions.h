#pragma once

#include <libical/ical.h>

#include <QList>
#include <QSet>
#include <optional>

#include "platform/ical/module/CalendarZones.h"

namespace tarnwick {

/// One time that something happens.
struct Occasion {
  WallSeconds wall = 0;  ///< In the clock of its series.
  UtcSeconds utc = 0;
};

/// How long rules may be followed that make the library look through the centuries for a day that never comes.
struct WalkBudget {
  qint64 leftMs = 3000;
};

/// When a component happens: its rules and further dates, less what is taken out.
class Occasions {
 public:
  /// `anchor`: when it first happens. `length` in seconds, of every occasion.
  Occasions(icalcomponent* component, CalendarZones& zones, const CalendarTime& anchor, qint64 length,
            WalkBudget& budget);

  /// Whether it happens more than once.
  bool isSeries() const { return isSeries_; }
  /// The occasions that touch the range and are not taken out, in order, each once; bounded in number.
  QList<Occasion> within(UtcSeconds from, UtcSeconds until) const;

  /// Something else replaces this occasion.
  void takeOut(const CalendarTime& occasion);

 private:
  bool isTakenOut(const Occasion& occasion) const;
  /// A moment in the clock of the series.
  WallSeconds meant(const CalendarTime& occasion) const;
  void addRule(icalproperty* property);
  qint64 evenStep(const icalrecurrencetype& rule) const;
  void walk(const icalrecurrencetype& rule, WallSeconds from, WallSeconds until, QSet<WallSeconds>& into) const;
  void follow(const icalrecurrencetype& rule, WallSeconds from, WallSeconds until, QSet<WallSeconds>& into) const;

  CalendarZones& zones_;
  WalkBudget& budget_;
  CalendarTime anchor_;
  qint64 length_;
  bool isSeries_ = false;
  QList<icalrecurrencetype> rules_;
  QList<CalendarTime> dates_;
  QSet<UtcSeconds> takenOut_;
  QSet<WallSeconds> takenDays_;
};

}  // namespace tarnwick
