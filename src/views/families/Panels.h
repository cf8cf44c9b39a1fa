#pragma once

#include <memory>

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// Makes the panel behind a widget's tile. Never null: a kind without a panel of its own gets the plain one, which says
/// in a sentence what the widget lacks. The panel is not started yet.
///
/// A new family is one file with a class derived from TilePanel and a factory, and one row in Panels.cpp.
std::unique_ptr<TilePanel> makePanel(const PanelContext& context);

/// Whether there is a panel of its own for a widget.
bool hasOwnPanel(const WidgetDefinition& definition);

}  // namespace tarnwick
