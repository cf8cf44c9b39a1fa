#pragma once

#include "config/DockWidget.h"
#include "views/tiles/TileSources.h"
#include "widgets/catalog/WidgetDefinition.h"

namespace tarnwick {

/// What the content of one tile is made from.
struct TileRequest {
  const DockWidget& widget;
  const WidgetDefinition& definition;
  const TileSources& sources;
  bool comesLater = false;  ///< Whether nothing in this version fills tiles of this kind.

  /// The user's name for the widget, or the catalog's.
  const QString& title() const { return widget.title.isEmpty() ? definition.name : widget.title; }
};

}  // namespace tarnwick
