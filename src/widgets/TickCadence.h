#pragma once

#include "config/DockWidget.h"

namespace tarnwick {

/// How often a tile has something new to show by the clock alone.
enum class TickCadence { Second, Minute, Still };

struct Ticking {
  static bool timerIsRunning(const DockWidget& widget);
};

}  // namespace tarnwick
