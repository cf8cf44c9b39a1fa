#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// A month, and below it what the chosen day holds, with a way into its meetings.
std::unique_ptr<TilePanel> makeCalendarPanel(const PanelContext& context);

}  // namespace tarnwick
