#pragma once

#include <QString>

#include "views/theme/Palette.h"
#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

/// The content of `widget` at one moment. Never fails: a kind without a painter of its own gets the generic tile.
TileContent makeTileContent(const DockWidget& widget, const WidgetDefinition& definition, const TileSources& sources);

/// What could not be read of that which a tile shows, as a finished sentence; empty where nothing is missing.
QString tileProblem(const WidgetDefinition& definition, const TileSources& sources);

/// The one accent of a kind of widget.
Accent tileAccent(const WidgetDefinition& definition);

}  // namespace tarnwick
