#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

namespace tarnwick {

/// Paints the ground of a tile that stands still: a rounded pane with a thin line inside its edge. All tiles of a dock
/// share the same one or two, which differ in nothing but their width, so a pane is painted once and laid down in
/// pieces: its ends, and a strip as often as the middle needs it.
class TileGround {
 public:
  /// How far the rounding of the corners reaches is `corner`, in the painter's units like `rect`.
  static void paint(QPainter& painter, const QRectF& rect, double corner, const QColor& fill, const QColor& edge);
};

}  // namespace tarnwick
