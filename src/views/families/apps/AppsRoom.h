#pragma once

#include <memory>

#include "views/panels/Room.h"
#include "views/panels/TilePanel.h"

namespace tarnwick {

/// All installed applications, to be searched and started.
std::unique_ptr<TilePanel> makeApplicationsPanel(const PanelContext& context);
/// The applications that the user put into one tile; more can be added from the list of all.
std::unique_ptr<TilePanel> makeAppFolderPanel(const PanelContext& context);

/// The applications in the pictures of the program. None of them is installed anywhere.
void pictureApplications(TileSources& sources);
void fillReadingsWithApplications(const PicturedParts& parts);

}  // namespace tarnwick
