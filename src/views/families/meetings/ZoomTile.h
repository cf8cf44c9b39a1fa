#pragma once

#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// A running meeting: for how long, how many take part, and whether one is heard.
struct ZoomTileContent {
  QString figure;  ///< How long it has lasted, or what there is instead.
  QString caption;
  QString spoken;
  bool isOn = false;
  bool isMuted = false;  ///< The button of the microphone offers to be heard.

  bool operator==(const ZoomTileContent&) const = default;
};
ZoomTileContent makeZoom(const TileRequest& request);
TileText describe(const ZoomTileContent& content, const QString& name);
void paint(TileCanvas& canvas, const ZoomTileContent& content);

}  // namespace tarnwick
