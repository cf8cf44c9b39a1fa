#pragma once

#include <QPainterPath>

namespace tarnwick {

/// A rectangle with four round corners, as a path to fill, draw or clip with.
inline QPainterPath roundedPath(const QRectF& box, double radius) {
  QPainterPath path;
  path.addRoundedRect(box, radius, radius);
  return path;
}

}  // namespace tarnwick
