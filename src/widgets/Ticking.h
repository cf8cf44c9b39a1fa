#pragma once

#include "config/DockWidget.h"
#include "widgets/catalog/TickCadence.h"

namespace tarnwick {

struct Ticking {
  /// How often the tile of a widget has something new to show by the clock alone: each second, each minute or never.
  static TickCadence cadence(const DockWidget& widget);
  static bool timerIsRunning(const DockWidget& widget);
};

}  // namespace tarnwick
