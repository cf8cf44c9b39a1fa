#pragma once

#include <memory>

#include "views/panels/Room.h"
#include "views/panels/TilePanel.h"

namespace tarnwick {

/// The history in its groups, searched by writing, to be put back on the clipboard, dragged out and removed.
std::unique_ptr<TilePanel> makeClipboardPanel(const PanelContext& context);
/// Its groups and what else it shows, for the pictures of the program.
std::span<const PanelState> clipboardPanelStates();

/// What was copied, in the pictures of the program.
void pictureClipboard(TileSources& sources);
void fillStoreWithClipboard(AppStore& store, const QDateTime& now);
void fillReadingsWithClipboard(const PicturedParts& parts);

}  // namespace tarnwick
