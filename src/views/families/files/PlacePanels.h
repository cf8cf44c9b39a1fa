#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// How much is in the trash; opens it, and empties it after asking.
std::unique_ptr<TilePanel> makeTrashPanel(const PanelContext& context);
/// The bookmarks of the user's browsers, to be searched and opened.
std::unique_ptr<TilePanel> makeBookmarksPanel(const PanelContext& context);
/// Looks for something in the web.
std::unique_ptr<TilePanel> makeWebSearchPanel(const PanelContext& context);

}  // namespace tarnwick
