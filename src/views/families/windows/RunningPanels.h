#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// The applications that run, and their windows where this desktop tells them.
std::unique_ptr<TilePanel> makeRunningAppsPanel(const PanelContext& context);
/// Shows the window that the tile stands for, and lets the user choose another one.
std::unique_ptr<TilePanel> makePinnedWindowPanel(const PanelContext& context);

}  // namespace tarnwick
