#include "desktop/ZoneMath.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {
namespace {

QRectF around(const QRectF& panel) {
  return panel.adjusted(-ZoneMath::kAroundHorizontally, -ZoneMath::kAroundVertically, ZoneMath::kAroundHorizontally,
                        ZoneMath::kAroundVertically);
}

// To the outline, from within and from without.
double distanceTo(const QRectF& area, const QPointF& place) {
  return std::abs(
      std::max({area.left() - place.x(), place.x() - area.right(), area.top() - place.y(), place.y() - area.bottom()}));
}

}  // namespace

PointerZones ZoneMath::zones(const QPointF& pointer, const QRectF& screen, const QRectF& panel, double triggerSize) {
  const QRectF close = around(panel);
  const double x = pointer.x();
  const double y = pointer.y();
  // A position names the upper left corner of a pixel; at the bottom edge the pixel's lower side is what touches it.
  const double lower = y + 1;
  const bool onScreen = x >= screen.left() && x <= screen.right();
  return {!panel.isEmpty() && x >= close.left() && x <= close.right() && y >= close.top() && y <= close.bottom(),
          onScreen && lower > screen.bottom() - triggerSize && y <= screen.bottom(),
          onScreen && y >= screen.top() && y < screen.top() + triggerSize};
}

PointerZones ZoneMath::zones(const QPointF& pointer, const QRectF& screen, const ZoneRequest& request) {
  PointerZones result = zones(pointer, screen, request.panel, request.triggerSize);
  result.bottomEdge = result.bottomEdge || request.systemDock.contains(pointer);
  return result;
}

double ZoneMath::distance(const QPointF& pointer, const QRectF& screen, const QRectF& panel, double triggerSize) {
  const QSizeF strip(screen.width(), triggerSize);
  const QRectF bottom(QPointF(screen.left(), screen.bottom() - triggerSize), strip);
  const double toEdges = std::min(distanceTo(bottom, pointer), distanceTo(QRectF(screen.topLeft(), strip), pointer));
  // The lower side of the pixel counts at the bottom.
  const double toOutlines = panel.isEmpty() ? toEdges : std::min(toEdges, distanceTo(around(panel), pointer));
  return std::max(0.0, toOutlines - 1);
}

double ZoneMath::distance(const QPointF& pointer, const QRectF& screen, const ZoneRequest& request) {
  const double own = distance(pointer, screen, request.panel, request.triggerSize);
  return request.systemDock.isEmpty() ? own : std::min(own, std::max(0.0, distanceTo(request.systemDock, pointer) - 1));
}

}  // namespace tarnwick
