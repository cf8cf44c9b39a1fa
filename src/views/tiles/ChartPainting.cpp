#include "views/tiles/ChartPainting.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <QPainterPathStroker>
#include <algorithm>
#include <cmath>

#include "views/theme/Bands.h"
#include "views/theme/SmoothLine.h"
#include "views/tiles/TileCanvas.h"

namespace tarnwick {

namespace {

constexpr double kLineWidth = 2;
constexpr double kDot = 2.5;
constexpr double kHalo = 4.5;
constexpr double kHaloShare = 0.25;
constexpr double kFillTop = 0.30;
constexpr double kFillFoot = 0.04;

QList<QPointF> pointsOf(const QRectF& box, const QList<double>& values, const ChartLook& look) {
  QList<QPointF> points;
  const qsizetype count = std::min(values.size(), std::max<qsizetype>(2, look.depth));
  const double step = box.width() / static_cast<double>(std::max<qsizetype>(2, look.depth) - 1);
  const double range = look.high > look.low ? look.high - look.low : 1;
  for (qsizetype i = 0; i < count; ++i) {
    const double value = values[values.size() - count + i];
    const double share = std::isfinite(value) ? std::clamp((value - look.low) / range, 0.0, 1.0) : 0;
    const double height = share * box.height();
    points.append({box.right() - step * static_cast<double>(count - 1 - i),
                   look.hanging ? box.top() + height : box.bottom() - height});
  }
  return points;
}

void paintArea(QPainter& painter, const QRectF& box, QPainterPath area, const QList<QPointF>& points,
               const ChartLook& look) {
  const double foot = look.hanging ? box.top() : box.bottom();
  area.lineTo(points.last().x(), foot);
  area.lineTo(points.first().x(), foot);
  area.closeSubpath();
  QLinearGradient fill(box.topLeft(), box.bottomLeft());
  fill.setColorAt(look.hanging ? 1 : 0, faded(look.color, kFillTop));
  fill.setColorAt(look.hanging ? 0 : 1, faded(look.color, kFillFoot));
  inBands(painter, box, [&] { painter.fillPath(area, fill); });
}

void paintUpright(TileCanvas& canvas, const QRectF& box, const QList<double>& values, const ChartLook& look) {
  if (values.isEmpty()) return;
  QPainter& painter = canvas.painter();
  const QList<QPointF> points = pointsOf(box, values, look);
  if (points.size() > 1) {
    const QPainterPath line = smoothLine(points);
    if (look.filled) paintArea(painter, box, line, points, look);
    QPainterPathStroker pen;
    pen.setWidth(kLineWidth);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    QPainterPath stroke = pen.createStroke(line);
    stroke.setFillRule(Qt::WindingFill);
    inBands(painter, box.adjusted(-kLineWidth, -kLineWidth, kLineWidth, kLineWidth),
            [&] { painter.fillPath(stroke, look.color); });
  }
  if (!look.marked) return;
  painter.setPen(Qt::NoPen);
  painter.setBrush(faded(look.color, kHaloShare));
  painter.drawEllipse(points.last(), kHalo, kHalo);
  painter.setBrush(look.color);
  painter.drawEllipse(points.last(), kDot, kDot);
}

}  // namespace

double highestOf(const QList<double>& values) {
  double highest = 0;
  for (const double value : values)
    if (std::isfinite(value)) highest = std::max(highest, value);
  return highest;
}

void paintChart(TileCanvas& canvas, const QRectF& box, const QList<double>& values, const ChartLook& look) {
  // Time runs to the right for everyone.
  canvas.unmirrored(box.center().x(), [&] { paintUpright(canvas, box, values, look); });
}

}  // namespace tarnwick
