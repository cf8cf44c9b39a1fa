#pragma once

#include <QList>
#include <QObject>
#include <QUuid>

#include "config/DockWidget.h"
#include "views/tiles/TileSources.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {

/// One of the places that values of tiles come from. It gives its own part of TileSources and reports when that is
/// another than before, so that nothing else is asked then and no other tile is made anew.
class TileSource : public QObject {
  Q_OBJECT
 public:
  /// Sets its whole part, whatever stood there, to what these widgets show. What none of them shows is not read.
  virtual void fill(TileSources& sources, const QList<DockWidget>& widgets) = 0;
  /// Whether its part is another when the options of this widget are.
  virtual bool readsOptionsOf(const DockWidget& /*widget*/) const { return false; }
  /// Whether its part is another with every minute, without a word: then it is taken anew for the tiles that tick.
  virtual bool turnsWithTheMinute() const { return false; }

 Q_SIGNALS:
  /// Tiles of these families show another value.
  void changed(const QList<Family>& families);
  /// The tile of one widget does, and no other.
  void widgetChanged(const QUuid& widget);
};

}  // namespace tarnwick
