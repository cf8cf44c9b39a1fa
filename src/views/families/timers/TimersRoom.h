#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// Countdowns, focus sessions, posture and the stopwatch: the figure, what can be done with it, and the durations.
std::unique_ptr<TilePanel> makeCountdownPanel(const PanelContext& context);
std::unique_ptr<TilePanel> makePomodoroPanel(const PanelContext& context);
std::unique_ptr<TilePanel> makePosturePanel(const PanelContext& context);
std::unique_ptr<TilePanel> makeStopwatchPanel(const PanelContext& context);

}  // namespace tarnwick
