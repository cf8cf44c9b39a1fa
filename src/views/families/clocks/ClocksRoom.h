#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// The time, the date, the zones that the clock goes by, and a month.
std::unique_ptr<TilePanel> makeClockPanel(const PanelContext& context);

}  // namespace tarnwick
