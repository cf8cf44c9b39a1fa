#pragma once

#include <functional>
#include <memory>

#include "views/tiles/KeptSources.h"
#include "views/tiles/TileStyle.h"

namespace tarnwick {

/// Where the pictures of tiles in windows come from.
struct PreviewSources {
  /// Begins to keep what tiles show, whether or not a dock holds them. Left empty, there are no pictures.
  std::function<std::unique_ptr<KeptSources>()> keep;
  TileIcons icons;
};

}  // namespace tarnwick
