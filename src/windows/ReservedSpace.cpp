#include "windows/ReservedSpace.h"

#include <algorithm>

namespace tarnwick {
namespace {

/// No larger than an area and inside it, moved no farther than that takes. Where both edges do not fit, the bottom one
/// does.
QRectF clamped(const QRectF& frame, const QRectF& area) {
  const double width = std::min(std::max(frame.width(), 1.0), area.width());
  const double height = std::min(std::max(frame.height(), 1.0), area.height());
  const double x = std::min(std::max(frame.x(), area.x()), area.right() - width);
  const double y = std::min(std::max(frame.y(), area.y()), area.bottom() - height);
  return {x, y, width, height};
}

}  // namespace

std::optional<QRectF> ReservedSpace::clear(const QRectF& window) const {
  const double small = kSmallWindow * scale;
  if (!window.intersects(dock) || window.width() <= small || window.height() <= small) return std::nullopt;
  const double clearance = kClearance * scale;
  QRectF area = visible;
  if (dock.center().y() < visible.center().y())
    area.setTop(dock.bottom() + clearance);
  else
    area.setBottom(dock.top() - clearance);
  if (area.height() < kLeastHeight * scale) return std::nullopt;
  const QRectF clear = clamped(window, area);
  if (clear == window) return std::nullopt;
  return clear;
}

}  // namespace tarnwick
