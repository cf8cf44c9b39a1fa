#pragma once

#include <QString>

#include "config/DockWidget.h"

namespace tarnwick {

/// How often a tile has something new to show by the clock alone.
enum class TickCadence { Second, Minute, Still };

struct Ticking {
  static TickCadence cadence(const QString& family, const QString& kind, bool running);
  /// Of a widget as it is now: its kind's cadence, with its timer running or not.
  static TickCadence cadence(const DockWidget& widget);
  static bool timerIsRunning(const DockWidget& widget);
};

}  // namespace tarnwick
