#pragma once

#include "views/panels/TilePanel.h"

namespace tarnwick {

/// A color: taken from the screen, typed or mixed, and written the ways that people need it.
std::unique_ptr<TilePanel> makeColorPanel(const PanelContext& context);

/// Makes a color the one of a widget and the first of those that it had. A color that is none changes nothing.
void takeColor(AppStore& store, const QUuid& widget, const QString& hex);

}  // namespace tarnwick
