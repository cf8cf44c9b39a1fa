#include "views/theme/WaterGlass.h"

#include <QPainterPath>
#include <algorithm>

namespace tarnwick {

namespace {

// Shares of the width.
constexpr double kTaper = 0.11;
constexpr double kCornerShare = 0.2;
constexpr double kRimCorner = 0.05;
constexpr double kWave = 0.07;

QPainterPath glassOutline(const QRectF& box) {
  const double taper = box.width() * kTaper;
  const double corner = box.width() * kCornerShare;
  const double rim = box.width() * kRimCorner;
  const double slope = taper / box.height();  // How far a side leans in for each unit downwards.
  QPainterPath path(QPointF(box.left() + rim, box.top()));
  path.lineTo(box.right() - rim, box.top());
  path.quadTo(box.right(), box.top(), box.right() - slope * rim, box.top() + rim);
  path.lineTo(box.right() - taper + slope * corner, box.bottom() - corner);
  path.quadTo(box.right() - taper, box.bottom(), box.right() - taper - corner, box.bottom());
  path.lineTo(box.left() + taper + corner, box.bottom());
  path.quadTo(box.left() + taper, box.bottom(), box.left() + taper - slope * corner, box.bottom() - corner);
  path.lineTo(box.left() + slope * rim, box.top() + rim);
  path.quadTo(box.left(), box.top(), box.left() + rim, box.top());
  path.closeSubpath();
  return path;
}

QPainterPath waterBody(const QRectF& box, double share) {
  const double level = box.bottom() - box.height() * share;
  // A full glass has no wave that could stand out of it.
  const double wave = share < 1 ? box.width() * kWave : 0;
  QPainterPath path(QPointF(box.left(), level));
  path.cubicTo(box.left() + box.width() * 0.25, level + wave, box.left() + box.width() * 0.4, level + wave,
               box.center().x(), level);
  path.cubicTo(box.left() + box.width() * 0.6, level - wave, box.left() + box.width() * 0.75, level - wave, box.right(),
               level);
  path.lineTo(box.bottomRight());
  path.lineTo(box.bottomLeft());
  path.closeSubpath();
  return path;
}

}  // namespace

void drawWaterGlass(QPainter& painter, const QRectF& box, double share, const QColor& glass, const QColor& water) {
  const QPainterPath outline = glassOutline(box);
  painter.fillPath(outline, glass);
  if (share > 0) painter.fillPath(outline.intersected(waterBody(box, std::min(share, 1.0))), water);
}

}  // namespace tarnwick
