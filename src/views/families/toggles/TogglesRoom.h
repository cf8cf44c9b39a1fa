#pragma once

#include <memory>

#include "views/panels/TilePanel.h"
#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

/// The desktop's switches, a disc each.
TileContent makeToggles(const TileRequest& request);

/// All of the desktop's switches, each with a sentence: what it does, or why this desktop hasn't got it.
std::unique_ptr<TilePanel> makeTogglesPanel(const PanelContext& context);

}  // namespace tarnwick
