#pragma once

#include <QPainter>
#include <QRectF>

#include "views/theme/Palette.h"

namespace tarnwick {

/// What is on the dock itself. On a dock that is clear, every mark gets a ring of the opposite tone, so that it is
/// seen whatever lies behind.
struct ClearMarks {
  static bool isClear(const Palette& palette) { return palette.dotRing.isValid(); }

  /// A line that parts tiles, in `color` where the dock has a ground of its own.
  static void drawLine(QPainter& painter, const QRectF& line, const QColor& color, const Palette& palette);
  /// The dashed outline of a place that is free.
  static void drawGap(QPainter& painter, const QRectF& rect, double corner, const Palette& palette);
  /// A ground for words that are on the dock itself; none is needed where it is not clear.
  static void drawGround(QPainter& painter, const QRectF& rect, double corner, const Palette& palette);
};

}  // namespace tarnwick
