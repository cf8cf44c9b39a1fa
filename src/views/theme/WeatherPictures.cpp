#include "views/theme/WeatherPictures.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <QPolygonF>
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

QPainterPath crescent(QPointF centre, double radius) {
  QPainterPath disc;
  disc.addEllipse(centre, radius, radius);
  QPainterPath bite;
  bite.addEllipse(centre + QPointF(radius * 0.52, -radius * 0.36), radius * 0.86, radius * 0.86);
  return disc.subtracted(bite);
}

void drawMoon(QPainter& painter, const QPainterPath& moon, const Palette& palette) {
  const PictureColors& colors = palette.pictures;
  fillBody(painter, moon, palette.light ? colors.cloudBottom : colors.cloudTop, colors.cloudBottom);
}

void drawCloud(QPainter& painter, QPointF at, const PictureColors& colors) {
  painter.save();
  painter.translate(at);
  fillBody(painter, cloud(), colors.cloudTop, colors.cloudBottom);
  painter.restore();
}

/// What falls, or lies, below a cloud that has been moved up for it.
constexpr QPointF kRaised(3, -9.8);

/// Slanted strokes below a cloud, around `middles`.
void drawDrops(QPainter& painter, std::initializer_list<double> middles, double length, const Palette& palette) {
  constexpr double top = 22.8;
  constexpr double slant = 0.42;
  painter.setPen(QPen(palette.accent(Accent::Blue), 2.2, Qt::SolidLine, Qt::RoundCap));
  for (const double x : middles)
    painter.drawLine(QPointF(x + length * slant / 2, top), QPointF(x - length * slant / 2, top + length));
}

void drawFlakes(QPainter& painter, const Palette& palette) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette.light ? palette.accent(Accent::Blue) : palette.pictures.cloudTop);
  for (const QPointF flake :
       {QPointF(9.5, 23.6), QPointF(16, 23.6), QPointF(22.5, 23.6), QPointF(12.7, 28.4), QPointF(19.3, 28.4)})
    painter.drawEllipse(flake, 1.6, 1.6);
}

void drawMist(QPainter& painter, const PictureColors& colors) {
  painter.setPen(QPen(colors.cloudBottom, 2.2, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(6, 23.7), QPointF(24, 23.7));
  painter.drawLine(QPointF(9.5, 28.3), QPointF(27, 28.3));
}

void drawBolt(QPainter& painter, const Palette& palette) {
  QPainterPath bolt;
  bolt.addPolygon(QPolygonF{{17.6, 16.8}, {11.6, 24.6}, {15.4, 24.6}, {13.4, 31}, {20.6, 22.4}, {16.6, 22.4}});
  bolt.closeSubpath();
  fillBody(painter, bolt, palette.pictures.sunTop, palette.pictures.sunBottom);
}

}  // namespace

void drawWeather(QPainter& painter, WeatherPicture picture, QPointF topLeft, double size, const Palette& palette) {
  const PictureColors& colors = palette.pictures;
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
      drawCloud(painter, {}, colors);
      break;
    case WeatherPicture::Cloud:
      drawCloud(painter, {3, -4.5}, colors);
      break;
    case WeatherPicture::Fog:
      drawCloud(painter, kRaised, colors);
      drawMist(painter, colors);
      break;
    case WeatherPicture::Drizzle:
      drawCloud(painter, kRaised, colors);
      drawDrops(painter, {11.5, 19.5}, 3.6, palette);
      break;
    case WeatherPicture::Rain:
      drawCloud(painter, kRaised, colors);
      drawDrops(painter, {9.5, 16, 22.5}, 6.4, palette);
      break;
    case WeatherPicture::Snow:
      drawCloud(painter, kRaised, colors);
      drawFlakes(painter, palette);
      break;
    case WeatherPicture::Thunder:
      drawCloud(painter, kRaised, colors);
      drawDrops(painter, {8.5, 24}, 5, palette);
      drawBolt(painter, palette);
      break;
    case WeatherPicture::Moon:
      drawMoon(painter, crescent({15.5, 16.5}, 10.5), palette);
      break;
    case WeatherPicture::CloudMoon:
      drawMoon(painter, crescent({19.8, 11.2}, 7.6).subtracted(cloud()), palette);
      drawCloud(painter, {}, colors);
      break;
  }
  painter.restore();
}

}  // namespace tarnwick
