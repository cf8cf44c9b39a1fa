#pragma once

#include "services/Connections.h"
#include "views/tiles/TileSource.h"

namespace tarnwick {

/// Gives tiles what services answered their widgets.
class ConnectionTiles final : public TileSource {
 public:
  /// Outlives it.
  explicit ConnectionTiles(const Connections& connections);

  void fill(TileSources& sources, const QList<DockWidget>& widgets) override;

 private:
  const Connections& connections_;
};

}  // namespace tarnwick
