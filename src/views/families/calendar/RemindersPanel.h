#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// What is due, to be ticked off.
std::unique_ptr<TilePanel> makeRemindersPanel(const PanelContext& context);

}  // namespace tarnwick
