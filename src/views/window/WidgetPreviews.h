#pragma once

#include <QList>
#include <functional>

#include "config/DockWidget.h"
#include "views/tiles/TileSources.h"
#include "views/tiles/TileStyle.h"

namespace tarnwick {

/// Where the pictures of tiles in windows come from.
struct PreviewSources {
  /// What tiles of these widgets show at this moment, whether or not a dock holds them.
  std::function<TileSources(const QList<DockWidget>& widgets)> values;
  TileIcons icons;
};

}  // namespace tarnwick
