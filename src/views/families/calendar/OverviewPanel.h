#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// The day at a glance: the weather, what is planned, what is due and what is to be done.
std::unique_ptr<TilePanel> makeOverviewPanel(const PanelContext& context);

}  // namespace tarnwick
