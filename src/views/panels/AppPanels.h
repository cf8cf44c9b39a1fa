#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// All installed applications, to be searched and started.
std::unique_ptr<TilePanel> makeApplicationsPanel(const PanelContext& context);
/// The applications that the user put into one tile; more can be added from the list of all.
std::unique_ptr<TilePanel> makeAppFolderPanel(const PanelContext& context);
/// The applications that run, and their windows where this desktop tells them.
std::unique_ptr<TilePanel> makeRunningAppsPanel(const PanelContext& context);
/// Shows the window that the tile stands for, and lets the user choose another one.
std::unique_ptr<TilePanel> makePinnedWindowPanel(const PanelContext& context);

}  // namespace tarnwick
