#include "views/theme/WeatherPictures.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <cmath>
#include <initializer_list>
#include <numbers>

#include "views/theme/Upright.h"

namespace tarnwick {

namespace {

constexpr double kPictureSize = 32;  // The square that the numbers below are given in.

void fillBody(QPainter& painter, const QPainterPath& body, const QColor& top, const QColor& bottom) {
  const QRectF box = body.boundingRect();
  QLinearGradient gradient(box.topLeft(), box.bottomLeft());
  gradient.setColorAt(0, top);
  gradient.setColorAt(1, bottom);
  painter.setPen(Qt::NoPen);
  painter.setBrush(gradient);
  painter.drawPath(body);
}

/// A disc and its rays at the given angles, in degrees clockwise from the top.
void drawSun(QPainter& painter, QPointF centre, double radius, std::initializer_list<int> rays,
             const PictureColors& colors, const QPainterPath& before = {}) {
  painter.setPen(QPen(colors.sunRay, radius * 0.31, Qt::SolidLine, Qt::RoundCap));
  for (const int degrees : rays) {
    const double angle = degrees * std::numbers::pi / 180;
    const QPointF direction(std::sin(angle), -std::cos(angle));
    painter.drawLine(centre + direction * radius * 1.46, centre + direction * radius * 1.77);
  }
  QPainterPath disc;
  disc.addEllipse(centre, radius, radius);
  // A faint picture would show the sun through what is before it; a solid one would show the seam of a cut.
  if (painter.opacity() < 1) disc = disc.subtracted(before);
  fillBody(painter, disc, colors.sunTop, colors.sunBottom);
}

QPainterPath cloud() {
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  path.addRoundedRect(QRectF(1, 18.7, 24, 10.8), 5.4, 5.4);
  path.addEllipse(QPointF(13, 20.1), 7.2, 7.2);
  return path.simplified();
}

}  // namespace

void drawWeather(QPainter& painter, WeatherPicture picture, QPointF topLeft, double size, const PictureColors& colors) {
  painter.save();
  keepUpright(painter, topLeft.x() + size / 2);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(topLeft);
  painter.scale(size / kPictureSize, size / kPictureSize);
  switch (picture) {
    case WeatherPicture::Sun:
      drawSun(painter, {16, 16}, 7.5, {0, 45, 90, 135, 180, 225, 270, 315}, colors);
      break;
    case WeatherPicture::CloudSun:
      drawSun(painter, {19.5, 14.5}, 6.5, {-45, 0, 45, 90}, colors, cloud());
      fillBody(painter, cloud(), colors.cloudTop, colors.cloudBottom);
      break;
    case WeatherPicture::Cloud:
      painter.translate(3, -4.5);
      fillBody(painter, cloud(), colors.cloudTop, colors.cloudBottom);
      break;
  }
  painter.restore();
}

}  // namespace tarnwick
