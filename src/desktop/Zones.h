#pragma once

#include <QList>
#include <QObject>
#include <QRectF>
#include <QString>

#include "desktop/Capability.h"

namespace tarnwick {

/// Where the pointer is, as far as a dock must know.
struct PointerZones {
  bool inside = false;      ///< Over the panel, or close to it.
  bool bottomEdge = false;  ///< At the bottom edge of the panel's screen.
  bool topEdge = false;     ///< At the top edge.

  bool operator==(const PointerZones&) const = default;
};

/// What to watch on one screen. Desktop coordinates.
struct ZoneRequest {
  QString screen;          ///< Screen::id
  QRectF panel;            ///< Where the dock is when it is shown.
  double triggerSize = 3;  ///< How thick the edges are.
  /// Which edges matter. To watch one may cost the windows there the clicks on its outermost pixels.
  bool watchesTop = true;
  bool watchesBottom = true;
  QRectF systemDock{};  ///< Of the desktop's own dock while it is out: it counts as the bottom edge. Empty for none.

  bool operator==(const ZoneRequest&) const = default;
};

/// Reports when the pointer enters and leaves the zones of the docks. Driven by the pointer's own events, never by
/// looking again; motion within a zone is not reported. Nothing else in the program asks where the pointer is.
class ZoneSensor : public QObject {
  Q_OBJECT
 public:
  /// Whether the pointer can be seen at the edges of the displays, and a dock put there. Where they cannot, a dock
  /// stands still in the place that it has.
  virtual Capability edges() const { return Capability::yes(); }
  /// Whether an edge is only its outermost pixel, however thick a request wants it.
  virtual bool feelsOnePixelOnly() const { return false; }
  /// Replaces what is watched; an empty list ends all listening. The zones are up to date when the call returns; what
  /// became different by the call itself is not announced.
  virtual void watch(const QList<ZoneRequest>& requests) = 0;
  virtual PointerZones zones(const QString& screen) const = 0;
  /// To be called when the pointer left a dock. A sensor that follows motion misses a pointer that a program moved, and
  /// asks where it is.
  virtual void pointerLeft() {}
  /// Whether something is being dragged, by any program. Known only while something is watched.
  virtual bool isDragging() const = 0;

 Q_SIGNALS:
  /// A zone was entered or left, or a drag began or ended.
  void changed();
  /// A press fell on an edge that is watched; no other window receives it.
  void edgePressed(const QString& screen);
};

}  // namespace tarnwick
