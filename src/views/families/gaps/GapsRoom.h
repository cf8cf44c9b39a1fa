#pragma once

#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

/// A line between tiles; it has no ground of its own.
TileContent makeSeparator(const TileRequest& request);
/// Space between tiles; it has no ground of its own.
TileContent makeSpace(const TileRequest& request);

}  // namespace tarnwick
