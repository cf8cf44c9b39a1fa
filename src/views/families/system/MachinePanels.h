#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// The processes that use most of the machine; one is ended after asking.
std::unique_ptr<TilePanel> makeProcessesPanel(const PanelContext& context);
/// How warm the processor is, and was.
std::unique_ptr<TilePanel> makeTemperaturePanel(const PanelContext& context);

}  // namespace tarnwick
