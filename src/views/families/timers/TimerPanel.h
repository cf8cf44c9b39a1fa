#pragma once

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// Countdowns, focus sessions, posture and the stopwatch: the figure, what a hand does with it, and the durations.
std::unique_ptr<TilePanel> makeTimerPanel(const PanelContext& context);

}  // namespace tarnwick
