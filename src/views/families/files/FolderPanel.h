#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// What lies in a folder, with pictures: looked through in place, sorted by date or name, opened, dragged out.
std::unique_ptr<TilePanel> makeFolderPanel(const PanelContext& context);

}  // namespace tarnwick
