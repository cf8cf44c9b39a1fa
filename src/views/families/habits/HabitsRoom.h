#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// The glass of the day, its goal and its reminder.
std::unique_ptr<TilePanel> makeWaterPanel(const PanelContext& context);
/// What the habit is, how long it has been kept, and the last weeks.
std::unique_ptr<TilePanel> makeHabitPanel(const PanelContext& context);

}  // namespace tarnwick
