#pragma once

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// Things to do: a field that adds one, a row for each.
std::unique_ptr<TilePanel> makeTodosPanel(const PanelContext& context);

}  // namespace tarnwick
