#pragma once

#include <QCalendar>
#include <QDateTime>
#include <QSet>
#include <QString>

#include "config/DockWidget.h"

namespace tarnwick {

/// Days on which a habit was kept.
struct HabitMath {
  /// "2026-11-24", in that calendar and the date's own zone.
  static QString key(const QDateTime& date, const QCalendar& calendar = QCalendar());
  static QSet<QString> completed(const DockWidget& widget);
  /// Days in a row up to today, or up to yesterday while today is still open.
  static int streak(const DockWidget& widget, const QDateTime& at, const QCalendar& calendar = QCalendar());
  /// The widget with today ticked off, or open again.
  static DockWidget toggled(const DockWidget& widget, const QDateTime& at, const QCalendar& calendar = QCalendar());
};

/// Glasses of water, counted anew each day.
struct WaterMath {
  static constexpr int kMostGlasses = 100;

  /// Glasses drunk today.
  static int count(const DockWidget& widget, const QDateTime& at);
  static int goal(const DockWidget& widget);
  /// The widget with one glass more (or fewer, down to none).
  static DockWidget drunk(const DockWidget& widget, const QDateTime& at, int glasses = 1);
};

}  // namespace tarnwick
