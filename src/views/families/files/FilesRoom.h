#pragma once

#include <memory>

#include "views/panels/Room.h"
#include "views/panels/TilePanel.h"

namespace tarnwick {

/// The files that were open last.
std::unique_ptr<TilePanel> makeRecentFilesPanel(const PanelContext& context);
/// The newest screenshots as pictures.
std::unique_ptr<TilePanel> makeScreenshotsPanel(const PanelContext& context);
/// The files that were put aside, to be taken to where they belong.
std::unique_ptr<TilePanel> makeShelfPanel(const PanelContext& context);
/// Looks for files by their names.
std::unique_ptr<TilePanel> makeFileSearchPanel(const PanelContext& context);
/// What lies in a folder, with pictures: looked through in place, sorted by date or name, opened, dragged out.
std::unique_ptr<TilePanel> makeFolderPanel(const PanelContext& context);
/// How much is in the trash; opens it, and empties it after asking.
std::unique_ptr<TilePanel> makeTrashPanel(const PanelContext& context);
/// The bookmarks of the user's browsers, to be searched and opened.
std::unique_ptr<TilePanel> makeBookmarksPanel(const PanelContext& context);
/// Looks for something in the web.
std::unique_ptr<TilePanel> makeWebSearchPanel(const PanelContext& context);

/// The files in the pictures of the program. None of them is on any disk.
void pictureFiles(TileSources& sources);
void fillStoreWithFiles(AppStore& store, const QDateTime& now);
void fillReadingsWithFiles(const PicturedParts& parts);

}  // namespace tarnwick
