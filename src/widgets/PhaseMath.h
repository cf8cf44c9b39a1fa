#pragma once

#include <QDateTime>
#include <QString>

#include "config/DockWidget.h"

namespace tarnwick {

/// Focus sessions and breaks. Phases: "work", "shortBreak", "longBreak".
struct PomodoroMath {
  /// Seconds, from one to a day. A phase that is not known lasts as long as work.
  static double duration(const DockWidget& widget, const QString& phase);
  /// The widget with every phase that has ended by `at` behind it; unchanged while none has. One that continues by
  /// itself catches up through all that passed while the computer slept; another one stops before the next phase.
  static DockWidget advance(const DockWidget& widget, const QDateTime& at);
};

/// Sitting and standing. Phases: "seated", "standing"; without a length for standing there is only the first.
struct PostureMath {
  static bool stands(const DockWidget& widget);
  static double duration(const DockWidget& widget, const QString& phase);
  static DockWidget advance(const DockWidget& widget, const QDateTime& at);
};

}  // namespace tarnwick
