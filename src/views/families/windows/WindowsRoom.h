#pragma once

#include "views/panels/Room.h"
#include "views/panels/TilePanel.h"

namespace tarnwick {

/// The applications that run, and their windows where this desktop reports them.
std::unique_ptr<TilePanel> makeRunningAppsPanel(const PanelContext& context);
/// Shows the window that the tile stands for, and lets the user choose another one.
std::unique_ptr<TilePanel> makePinnedWindowPanel(const PanelContext& context);

/// The applications that run in the pictures of the program, and their windows.
void pictureRunning(TileSources& sources);
void fillStoreWithRunning(AppStore& store, const QDateTime& now);
void fillReadingsWithWindows(const PicturedParts& parts);

}  // namespace tarnwick
