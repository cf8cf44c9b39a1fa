#include "views/families/weather/WeatherPainting.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <QPolygonF>
#include <QTransform>
#include <algorithm>
#include <cmath>
#include <numbers>

#include "views/theme/Glass.h"
#include "views/theme/SmoothLine.h"

namespace tarnwick {

namespace {

constexpr double kStroke = 2;
constexpr double kFillTop = 0.30;
constexpr double kFillFoot = 0.04;
constexpr double kHaloOpacity = 0.25;
constexpr double kHourDot = 2.5;
constexpr double kHourHalo = 4.5;
constexpr double kSunDot = 4.5;
constexpr double kSunHalo = 8;
constexpr double kRoseStroke = 1.5;
constexpr double kRoseTick = 4;
constexpr int kSunSteps = 48;
constexpr double kDaysFill = 0.13;
constexpr double kDaysLine = 0.42;
constexpr double kDaysStroke = 1.5;

void paintDot(QPainter& painter, QPointF at, double radius, double halo, const QColor& color) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(faded(color, kHaloOpacity));
  painter.drawEllipse(at, halo, halo);
  painter.setBrush(color);
  painter.drawEllipse(at, radius, radius);
}

QPointF onSunPath(const QRectF& box, double share) {
  return {box.left() + box.width() * share, box.bottom() - box.height() * std::sin(std::numbers::pi * share)};
}

QPainterPath sunPath(const QRectF& box, double from, double to) {
  QPainterPath path(onSunPath(box, from));
  for (int step = 1; step <= kSunSteps; ++step) path.lineTo(onSunPath(box, from + (to - from) * step / kSunSteps));
  return path;
}

}  // namespace

void paintHours(QPainter& painter, const QRectF& box, const QList<double>& degrees, const Palette& palette) {
  if (degrees.size() < 2) return;
  const auto [least, most] = std::ranges::minmax(degrees);
  // A day without a change is a line in the middle.
  const double span = most - least;
  const double step = box.width() / static_cast<double>(degrees.size() - 1);
  QList<QPointF> points;
  for (qsizetype i = 0; i < degrees.size(); ++i) {
    const double share = span > 0 ? (degrees[i] - least) / span : 0.5;
    points.append({box.left() + step * static_cast<double>(i), box.bottom() - share * box.height()});
  }
  const QColor color = palette.accent(Accent::Yellow);
  const QPainterPath line = smoothLine(points);
  QPainterPath area = line;
  const double foot = box.bottom() + kHourHalo;
  area.lineTo(box.right(), foot);
  area.lineTo(box.left(), foot);
  area.closeSubpath();
  QLinearGradient fill(box.topLeft(), {box.left(), foot});
  fill.setColorAt(0, faded(color, kFillTop));
  fill.setColorAt(1, faded(color, kFillFoot));
  painter.fillPath(area, fill);
  painter.strokePath(line, QPen(color, kStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  paintDot(painter, points.first(), kHourDot, kHourHalo, color);
}

void paintSunPath(QPainter& painter, const QRectF& box, const std::optional<double>& share, const Palette& palette) {
  const double line = hairline(painter);
  painter.fillRect(QRectF(box.left(), box.bottom() - line / 2, box.width(), line), palette.hairline);
  const QPen rest(palette.track, kStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  const bool isUp = share && *share >= 0 && *share <= 1;
  painter.strokePath(sunPath(box, isUp ? *share : 0, 1), rest);
  if (!isUp) return;
  // The sun of the pictures, whatever the accents of the style are.
  const QColor color = palette.pictures.sunRay;
  painter.strokePath(sunPath(box, 0, *share), QPen(color, kStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  paintDot(painter, onSunPath(box, *share), kSunDot, kSunHalo, color);
}

void paintRose(QPainter& painter, QPointF centre, double radius, const std::optional<double>& direction,
               const Palette& palette) {
  painter.save();
  painter.translate(centre);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(palette.track, kRoseStroke));
  painter.drawEllipse(QPointF(), radius - kRoseStroke / 2, radius - kRoseStroke / 2);
  painter.setPen(QPen(palette.secondary, kRoseStroke, Qt::SolidLine, Qt::RoundCap));
  for (const QPointF way : {QPointF(0, -1), QPointF(1, 0), QPointF(0, 1), QPointF(-1, 0)})
    painter.drawLine(way * (radius - kRoseStroke - 1.5), way * (radius - kRoseStroke - kRoseTick));
  if (direction) {
    painter.rotate(*direction + 180);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.accent(Accent::Blue));
    painter.drawPolygon(QPolygonF{
        {0, -radius * 0.58}, {radius * 0.36, radius * 0.48}, {0, radius * 0.26}, {-radius * 0.36, radius * 0.48}});
  }
  painter.restore();
}

void paintDays(QPainter& painter, const QRectF& box, double row, const QList<std::pair<double, double>>& days,
               double least, double most, const Palette& palette) {
  if (days.size() < 2) return;
  const double span = most > least ? most - least : 1;
  QList<QPointF> lows;
  QList<QPointF> highs;
  // Along the days first, as lines are made; then turned about.
  for (qsizetype i = 0; i < days.size(); ++i) {
    const auto [low, high] = std::minmax(days[i].first, days[i].second);
    const double along = box.top() + row * (static_cast<double>(i) + 0.5);
    lows << QPointF(along, box.left() + box.width() * std::clamp((low - least) / span, 0.0, 1.0));
    highs << QPointF(along, box.left() + box.width() * std::clamp((high - least) / span, 0.0, 1.0));
  }
  const QTransform turned(0, 1, 1, 0, 0, 0);
  const QPainterPath low = turned.map(smoothLine(lows));
  const QPainterPath high = turned.map(smoothLine(highs));
  QPainterPath between = low;
  between.connectPath(high.toReversed());
  between.closeSubpath();
  QLinearGradient fill(box.topLeft(), box.topRight());
  fill.setColorAt(0, faded(palette.accent(Accent::Blue), kDaysFill));
  fill.setColorAt(1, faded(palette.accent(Accent::Orange), kDaysFill));
  painter.fillPath(between, fill);
  const auto stroke = [&](const QPainterPath& line, Accent accent) {
    painter.strokePath(line, QPen(faded(palette.accent(accent), kDaysLine), kDaysStroke, Qt::SolidLine, Qt::RoundCap));
  };
  stroke(low, Accent::Blue);
  stroke(high, Accent::Orange);
}

void paintRange(QPainter& painter, const QRectF& track, double low, double high, double least, double most,
                const Palette& palette) {
  const double corner = track.height() / 2;
  drawRounded(painter, track, corner, palette.track);
  const double span = most > least ? most - least : 1;
  const double from = std::clamp((std::min(low, high) - least) / span, 0.0, 1.0);
  const double to = std::clamp((std::max(low, high) - least) / span, 0.0, 1.0);
  QRectF part(track.left() + track.width() * from, track.top(), track.width() * (to - from), track.height());
  if (part.width() < track.height()) {
    part.setWidth(track.height());
    part.moveLeft(std::min(part.left(), track.right() - track.height()));
  }
  QLinearGradient colors(track.topLeft(), track.topRight());
  colors.setColorAt(0, palette.accent(Accent::Blue));
  colors.setColorAt(0.35, palette.accent(Accent::Teal));
  colors.setColorAt(0.7, palette.accent(Accent::Yellow));
  colors.setColorAt(1, palette.accent(Accent::Orange));
  painter.setPen(Qt::NoPen);
  painter.setBrush(colors);
  painter.drawRoundedRect(part, corner, corner);
}

}  // namespace tarnwick
