#include "views/theme/TransportGlyphs.h"

#include <QPainterPath>

#include "views/theme/Glass.h"

namespace tarnwick {

namespace {
// Shares of the height.
constexpr double kPlayWidth = 0.84;
constexpr double kPlayCorner = 0.13;
constexpr double kBarWidth = 0.26;
constexpr double kBarGap = 0.28;
constexpr double kSkipBar = 0.18;
}  // namespace

void drawPlayGlyph(QPainter& painter, QPointF centre, double height, const QColor& color) {
  // The corners are rounded by the stroke, which is why the path lies inside of it. A triangle looks centred when its
  // weight is, not its box.
  const double inset = height * kPlayCorner;
  const double width = height * kPlayWidth;
  const double left = centre.x() - width * 0.42;
  QPainterPath path(QPointF(left + inset, centre.y() - height / 2 + inset));
  path.lineTo(left + width - inset, centre.y());
  path.lineTo(left + inset, centre.y() + height / 2 - inset);
  path.closeSubpath();
  painter.setPen(QPen(color, inset * 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(color);
  painter.drawPath(path);
}

void drawPauseGlyph(QPainter& painter, QPointF centre, double height, const QColor& color) {
  const double width = height * kBarWidth;
  const double gap = height * kBarGap;
  for (const double left : {centre.x() - gap / 2 - width, centre.x() + gap / 2})
    drawRounded(painter, QRectF(left, centre.y() - height / 2, width, height), width / 2.6, color);
}

void drawSkipGlyph(QPainter& painter, QPointF centre, double height, bool back, const QColor& color) {
  painter.save();
  painter.translate(centre);
  if (back) painter.scale(-1, 1);
  drawPlayGlyph(painter, {-height * kSkipBar, 0}, height, color);
  const double width = height * kSkipBar;
  drawRounded(painter, QRectF(height * kPlayWidth * 0.5, -height / 2, width, height), width / 2.2, color);
  painter.restore();
}

}  // namespace tarnwick
