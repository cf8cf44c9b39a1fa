#include "views/theme/SmoothLine.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {

namespace {

double slope(const QPointF& from, const QPointF& to) {
  const double width = to.x() - from.x();
  return width > 0 ? (to.y() - from.y()) / width : 0;
}

/// The slope at a sample between two others: level at an extreme, else a mean that is weighted by their distances and
/// keeps the line monotone on both sides.
double tangent(const QPointF& before, const QPointF& at, const QPointF& after) {
  const double left = slope(before, at);
  const double right = slope(at, after);
  if (left * right <= 0) return 0;
  const double leftWidth = at.x() - before.x();
  const double rightWidth = after.x() - at.x();
  const double leftWeight = 2 * rightWidth + leftWidth;
  const double rightWeight = rightWidth + 2 * leftWidth;
  return (leftWeight + rightWeight) / (leftWeight / left + rightWeight / right);
}

}  // namespace

QPainterPath smoothLine(const QList<QPointF>& samples) {
  if (samples.isEmpty()) return {};
  QPainterPath line(samples.first());
  const qsizetype last = samples.size() - 1;
  // Without a neighbour on the other side the line begins and ends straight.
  double from = last > 0 ? slope(samples[0], samples[1]) : 0;
  for (qsizetype i = 1; i <= last; ++i) {
    const double to =
        i < last ? tangent(samples[i - 1], samples[i], samples[i + 1]) : slope(samples[i - 1], samples[i]);
    const double third = (samples[i].x() - samples[i - 1].x()) / 3;
    line.cubicTo(samples[i - 1] + QPointF(third, from * third), samples[i] - QPointF(third, to * third), samples[i]);
    from = to;
  }
  return line;
}

}  // namespace tarnwick
