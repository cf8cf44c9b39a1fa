#include "app/ConnectionTiles.h"

#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {

ConnectionTiles::ConnectionTiles(const Connections& connections) : connections_(connections) {
  connect(&connections_, &Connections::changed, this, &TileSource::widgetChanged);
}

void ConnectionTiles::fill(TileSources& sources, const QList<DockWidget>& widgets) {
  sources.weather = {};
  sources.remote = {};
  for (const DockWidget& widget : widgets) {
    const auto reading = connections_.reading(widget.id);
    if (!reading) continue;
    // The rows of clocks and calendars show the weather as well.
    auto& values = isConnectedFamily(Catalog::find(widget.kind).family) ? sources.remote : sources.weather;
    values.set(widget.id, *reading);
  }
}

}  // namespace tarnwick
