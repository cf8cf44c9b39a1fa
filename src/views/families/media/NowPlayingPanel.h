#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// What is played, with its cover, a place to seek in, the buttons for it, and the choice of the player.
std::unique_ptr<TilePanel> makeNowPlayingPanel(const PanelContext& context);

}  // namespace tarnwick
