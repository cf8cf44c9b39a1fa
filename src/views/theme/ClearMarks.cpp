#include "views/theme/ClearMarks.h"

#include "views/theme/Glass.h"

namespace tarnwick {

void ClearMarks::drawLine(QPainter& painter, const QRectF& line, const QColor& color, const Palette& palette) {
  if (!isClear(palette)) {
    painter.fillRect(line, color);
    return;
  }
  const double ring = hairline(painter);
  painter.fillRect(line.adjusted(-ring, -ring, ring, ring), palette.dotRing);
  painter.fillRect(line, palette.secondary);
}

void ClearMarks::drawGap(QPainter& painter, const QRectF& rect, double corner, const Palette& palette) {
  if (!isClear(palette)) {
    drawDashed(painter, rect, corner, palette.gapOutline);
    return;
  }
  drawInnerLine(painter, rect, corner, hairline(painter), palette.dotRing);
  drawDashed(painter, rect, corner, palette.secondary);
}

void ClearMarks::drawGround(QPainter& painter, const QRectF& rect, double corner, const Palette& palette) {
  if (isClear(palette)) drawRounded(painter, rect, corner, palette.tile);
}

}  // namespace tarnwick
