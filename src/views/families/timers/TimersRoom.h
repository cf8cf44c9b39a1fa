#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// Countdowns, focus sessions, posture and the stopwatch: the figure, what can be done with it, and the durations.
std::unique_ptr<TilePanel> makeTimerPanel(const PanelContext& context);

}  // namespace tarnwick
