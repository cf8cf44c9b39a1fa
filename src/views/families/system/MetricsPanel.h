#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// One reading of the machine, or a pair: the figure of now, its history, and what belongs to it.
std::unique_ptr<TilePanel> makeMetricsPanel(const PanelContext& context);

}  // namespace tarnwick
