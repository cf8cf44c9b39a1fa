#pragma once

#include <QPointF>
#include <QRectF>

#include "desktop/Zones.h"

namespace tarnwick {

/// The zones of a dock as a function of where the pointer is. Pure; desktop coordinates.
struct ZoneMath {
  static constexpr double kAroundHorizontally = 10;
  static constexpr double kAroundVertically = 12;

  /// Zones include their outer lines, so that a pointer pressed against the edge of the screen counts, and leave out
  /// the inner ones.
  static PointerZones zones(const QPointF& pointer, const QRectF& screen, const QRectF& panel, double triggerSize);
  static PointerZones zones(const QPointF& pointer, const QRectF& screen, const ZoneRequest& request);
  /// How far the pointer must at least go, along one of the axes, before any of the zones can change.
  static double distance(const QPointF& pointer, const QRectF& screen, const QRectF& panel, double triggerSize);
  static double distance(const QPointF& pointer, const QRectF& screen, const ZoneRequest& request);
};

}  // namespace tarnwick
