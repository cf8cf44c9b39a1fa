#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// The buttons of a running meeting, each with what the meeting program itself calls it now.
std::unique_ptr<TilePanel> makeZoomPanel(const PanelContext& context);

}  // namespace tarnwick
