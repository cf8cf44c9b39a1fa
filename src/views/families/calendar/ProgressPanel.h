#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// How much of day, month and year has passed, and what is left.
std::unique_ptr<TilePanel> makeProgressPanel(const PanelContext& context);

}  // namespace tarnwick
