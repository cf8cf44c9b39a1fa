#pragma once

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// A field for an expression, its result or what is wrong with it, and keys.
std::unique_ptr<TilePanel> makeCalculatorPanel(const PanelContext& context);

}  // namespace tarnwick
