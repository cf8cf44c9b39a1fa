#pragma once

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// Emoji that are searched by words and copied with a click, those that were copied last on top.
std::unique_ptr<TilePanel> makeEmojiPanel(const PanelContext& context);

}  // namespace tarnwick
