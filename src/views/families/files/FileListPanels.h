#pragma once

#include <memory>

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

}  // namespace tarnwick
