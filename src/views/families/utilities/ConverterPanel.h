#pragma once

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// A value and its unit, and what that is in another unit of the same group.
std::unique_ptr<TilePanel> makeConverterPanel(const PanelContext& context);

}  // namespace tarnwick
