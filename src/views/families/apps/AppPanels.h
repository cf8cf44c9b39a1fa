#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// All installed applications, to be searched and started.
std::unique_ptr<TilePanel> makeApplicationsPanel(const PanelContext& context);
/// The applications that the user put into one tile; more can be added from the list of all.
std::unique_ptr<TilePanel> makeAppFolderPanel(const PanelContext& context);
}  // namespace tarnwick
