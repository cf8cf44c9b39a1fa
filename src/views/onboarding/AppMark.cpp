#include "views/onboarding/AppMark.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include "views/theme/Glass.h"
#include "views/theme/SceneColors.h"

namespace tarnwick {
namespace {

constexpr double kGrid = 100;
constexpr double kMarkCorner = 26;
constexpr double kHorizon = 61;

QPainterPath hill(double left, double rise, double peak, double top, double fall, double right) {
  QPainterPath path(QPointF(left, kHorizon + 1));
  path.lineTo(left, kHorizon);
  path.lineTo(rise, top + (kHorizon - top) * 0.14);
  path.quadTo(peak, top - (kHorizon - top) * 0.1, fall, top + (kHorizon - top) * 0.14);
  path.lineTo(right, kHorizon);
  path.lineTo(right, kHorizon + 1);
  path.closeSubpath();
  return path;
}

void paintMark(QPainter& painter, const QRectF& box) {
  const SceneColors colors;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(box.topLeft());
  painter.scale(box.width() / kGrid, box.height() / kGrid);
  QPainterPath outline;
  outline.addRoundedRect(QRectF(0, 0, kGrid, kGrid), kMarkCorner, kMarkCorner);
  const auto within = [&](const QPainterPath& path) { return path.intersected(outline); };

  QLinearGradient ground(0, 0, 0, kGrid);
  ground.setColorAt(0, colors.skyTop);
  ground.setColorAt(0.5, colors.skyMiddle);
  ground.setColorAt(kHorizon / kGrid, colors.skyGlow);
  ground.setColorAt(kHorizon / kGrid + 0.001, colors.waterTop);
  ground.setColorAt(1, colors.waterBottom);
  painter.fillPath(outline, ground);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colors.sun);
  painter.drawEllipse(QPointF(67.3, 37.6), 9.4, 9.4);
  painter.fillPath(within(hill(41, 63, 71, 44.5, 79, 101)), colors.hillFar);
  painter.fillPath(within(hill(0.5, 22, 29, 34, 36, 61)), colors.hillNear);

  drawRounded(painter, QRectF(19, 70.5, 62.5, 15.5), 7.75, colors.dock);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colors.accentTile);
  painter.drawEllipse(QPointF(29.7, 78.2), 4.1, 4.1);
  drawRounded(painter, QRectF(37.6, 74.2, 20.3, 8), 4, colors.ink);
  drawRounded(painter, QRectF(62.6, 74.2, 12, 8), 4, colors.tile);
  painter.restore();
  painter.setRenderHint(QPainter::Antialiasing);
  drawInnerLine(painter, box, kMarkCorner * box.width() / kGrid, 1, colors.rim);
}

}  // namespace

AppMark::AppMark(int size, QWidget* parent) : QWidget(parent) { setFixedSize(size, size); }

void AppMark::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintMark(painter, rect());
}

QIcon AppMark::icon() {
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128}) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintMark(painter, picture.rect());
    painter.end();
    icon.addPixmap(picture);
  }
  return icon;
}

}  // namespace tarnwick
