#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// All of the desktop's switches, each with a sentence: what it does, or why this desktop hasn't got it.
std::unique_ptr<TilePanel> makeTogglesPanel(const PanelContext& context);

}  // namespace tarnwick
