#pragma once

#include <QCalendar>
#include <QDateTime>
#include <QString>

#include "config/DockWidget.h"

namespace tarnwick {

/// The arithmetic of clocks and timers. Pure: the widget's options and a moment in, seconds or text out.
struct TimeMath {
  enum class Component { Day, Month, Year };

  /// How long a timer, a focus session and sitting take where nothing is set.
  static constexpr double kDefaultMinutes = 25;

  /// Seconds that a countdown has left, running or not; never negative.
  static double remaining(const DockWidget& widget, const QDateTime& at);
  /// Seconds that a stopwatch has counted.
  static double elapsed(const DockWidget& widget, const QDateTime& at);
  /// "25:00", "1:00:00"; "—" for what is no number.
  static QString display(double seconds);
  /// The share of the day, month or year that has passed, 0 to 1, in the date's own zone. Days are as long as they
  /// really are, also when the clocks change.
  static double progress(const QDateTime& date, Component component, const QCalendar& calendar = QCalendar());

  /// A moment as timers keep it: seconds since 1970.
  static double unixSeconds(const QDateTime& date) { return static_cast<double>(date.toMSecsSinceEpoch()) / 1000; }
  /// A number as options keep it.
  static QString text(double number);
};

}  // namespace tarnwick
