#pragma once

#include <QList>
#include <QRectF>
#include <optional>

namespace tarnwick {

/// A dock that windows are kept clear of. Rectangles are in the window system's own pixels, y downwards.
struct ReservedSpace {
  /// Between a dock and a window beside it, in points.
  static constexpr double kClearance = 8;
  /// Windows that are no wider or no taller are left alone, in points.
  static constexpr double kSmallWindow = 100;
  /// Windows are not squeezed into less height, in points.
  static constexpr double kLeastHeight = 180;

  QRectF dock;
  QRectF visible;    ///< Of its display: what the bars of others leave.
  double scale = 1;  ///< Pixels in a point.

  /// The frame that a window is given so that it stands beside the dock: as it is where that fits, smaller where not.
  /// Absent where it is not in the way, or is left alone.
  std::optional<QRectF> clear(const QRectF& window) const;
};

}  // namespace tarnwick
