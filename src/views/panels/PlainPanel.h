#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// The panel of a widget that has nothing to show: a service that is not connected, a place that is not chosen, a
/// facility that is not there. It says so in a sentence and leads to the widget's form where that helps.
std::unique_ptr<TilePanel> makePlainPanel(const PanelContext& context);

}  // namespace tarnwick
