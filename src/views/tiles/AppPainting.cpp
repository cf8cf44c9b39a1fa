#include "views/tiles/AppPainting.h"

#include <QLinearGradient>
#include <QLocale>
#include <algorithm>
#include <cmath>

#include "base/LocalFigures.h"
#include "views/theme/Glass.h"
#include "views/theme/Upright.h"
#include "views/tiles/TileCanvas.h"
#include "views/tiles/TilePainter.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kIconCorner = 0.26;  ///< Of the size of a stand-in.

constexpr qsizetype kMostDots = 4;
constexpr double kDotPitch = 6;
constexpr double kUrgentWidth = 14;
constexpr double kUrgentHeight = 4;
constexpr double kProgressInset = 5;
constexpr double kProgressHeight = 6;
constexpr double kProgressLift = 4;
constexpr double kBadgeHeight = 15;
constexpr double kBadgePadding = 4;
constexpr double kBadgeOut = 3;
constexpr double kBadgeUp = 4;
constexpr qint64 kLargestCount = 99;

constexpr double kSmallIcon = 15;  ///< Of one among several in a tile.

/// Where an application has no picture: a plate with its initial.
void drawStandIn(TileCanvas& canvas, const QRectF& box, const QString& name) {
  const PictureColors& colors = canvas.colors().pictures;
  QPainter& painter = canvas.painter();
  QLinearGradient gradient(box.topLeft(), box.bottomLeft());
  gradient.setColorAt(0, colors.plateTop);
  gradient.setColorAt(1, colors.plateBottom);
  painter.setPen(Qt::NoPen);
  painter.setBrush(gradient);
  painter.drawRoundedRect(box, box.width() * kIconCorner, box.width() * kIconCorner);
  drawInnerLine(painter, box, box.width() * kIconCorner, hairline(painter), colors.plateRim);
  const bool large = box.width() > kSmallIcon * 2;
  const TextLine letter = canvas.line(name.left(1).toUpper(), large ? TextStyle::Headline : TextStyle::GaugeLabel);
  letter.drawCentred(painter, {box.center().x(), TileCanvas::centredBaseline(letter, box.center().y())},
                     colors.plateInk);
}

/// A dot for each window, or a bar for one that calls. Where the ground asks for it each has a ring.
void paintDots(TileCanvas& canvas, double x, const AppMarks& marks) {
  QPainter& painter = canvas.painter();
  const Palette& colors = canvas.colors();
  if (marks.urgent) {
    const QRectF bar(x - kUrgentWidth / 2, theme::kAppDotTop - kUrgentHeight / 2, kUrgentWidth, kUrgentHeight);
    if (colors.dotRing.isValid())
      drawRounded(painter, bar.adjusted(-1, -1, 1, 1), kUrgentHeight / 2 + 1, colors.dotRing);
    drawRounded(painter, bar, kUrgentHeight / 2, colors.accent(Accent::Orange));
    return;
  }
  const qsizetype dots = std::clamp<qsizetype>(marks.windows, 1, kMostDots);
  const auto drawAll = [&](double radius, const QColor& color) {
    painter.setBrush(color);
    for (qsizetype dot = 0; dot < dots; ++dot) {
      const double away = (static_cast<double>(dot) - static_cast<double>(dots - 1) / 2) * kDotPitch;
      painter.drawEllipse(QPointF(x + away, theme::kAppDotTop), radius, radius);
    }
  };
  painter.setPen(Qt::NoPen);
  if (colors.dotRing.isValid()) drawAll(theme::kAppDotRadius + 1, colors.dotRing);
  drawAll(theme::kAppDotRadius, marks.front ? colors.accent(Accent::Blue) : colors.secondary);
}

void paintProgress(TileCanvas& canvas, const QRectF& icon, double progress) {
  const QRectF plate(icon.left() + kProgressInset, icon.bottom() - kProgressLift - kProgressHeight,
                     icon.width() - kProgressInset * 2, kProgressHeight);
  drawRounded(canvas.painter(), plate, kProgressHeight / 2, canvas.colors().tileDragged);
  QRectF bar = plate.adjusted(1, 1, -1, -1);
  const double share = std::isfinite(progress) ? std::clamp(progress, 0.0, 1.0) : 0;
  bar.setWidth(std::max(bar.height(), bar.width() * share));
  if (share <= 0) return;
  canvas.unmirrored(plate.center().x(), [&] {
    drawRounded(canvas.painter(), bar, bar.height() / 2, canvas.colors().accent(Accent::Blue));
  });
}

void paintCount(TileCanvas& canvas, const QRectF& icon, qint64 count) {
  const TextLine text =
      canvas.line(count > kLargestCount ? LocalFigures::number(kLargestCount) + u'+' : LocalFigures::number(count),
                  TextStyle::GaugeLabel);
  const double height = std::max(kBadgeHeight, text.pixelSize() + kBadgePadding);
  const double width = std::max(height, text.width() + kBadgePadding * 2);
  const double right = std::min(icon.right() + kBadgeOut, canvas.width());
  const QRectF badge(right - width, std::max(0.0, icon.top() - kBadgeUp), width, height);
  drawRounded(canvas.painter(), badge, height / 2, canvas.colors().accent(Accent::Red));
  text.drawCentred(canvas.painter(), {badge.center().x(), TileCanvas::centredBaseline(text, badge.center().y())},
                   canvas.colors().inkOnAccent);
}

}  // namespace

void drawAppMarks(TileCanvas& canvas, const QRectF& icon, const AppMarks& marks) {
  if (marks.running || marks.urgent) paintDots(canvas, icon.center().x(), marks);
  if (marks.progress) paintProgress(canvas, icon, *marks.progress);
  if (marks.count.value_or(0) > 0) paintCount(canvas, icon, *marks.count);
}

void drawAppIcon(TileCanvas& canvas, const QRectF& box, const QString& icon, const QString& name) {
  QPainter& painter = canvas.painter();
  const double unit = 1 / hairline(painter);
  const double ratio = unit / canvas.scale() / canvas.factor();
  const int side = static_cast<int>(std::lround(box.width() * canvas.scale() * ratio));
  const QPixmap picture = canvas.icon(icon, static_cast<int>(std::lround(side / ratio)), ratio);
  painter.save();
  keepUpright(painter, box.center().x());
  painter.setOpacity(painter.opacity() * canvas.iconOpacity());
  if (picture.isNull()) {
    drawStandIn(canvas, canvas.snapped(box), name);
  } else if (canvas.isStill() && painter.deviceTransform().type() <= QTransform::TxScale) {
    // Pixel for pixel.
    const QPoint corner = painter.deviceTransform().map(box.topLeft()).toPoint();
    painter.translate(painter.deviceTransform().inverted().map(QPointF(corner)));
    painter.scale(1 / unit, 1 / unit);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(QRectF(0, 0, side, side), picture, QRectF(picture.rect()));
  } else {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(box, picture, QRectF(picture.rect()));
  }
  painter.restore();
}

QString describe(const AppMarks& marks) {
  QStringList parts;
  if (marks.urgent) parts.append(TileWords::tr("Needs attention"));
  if (marks.running && marks.windows > 1)
    parts.append(TileWords::tr("%1 windows").arg(QLocale().toString(marks.windows)));
  if (marks.count.value_or(0) > 0) parts.append(QLocale().toString(*marks.count));
  if (marks.progress && std::isfinite(*marks.progress))
    parts.append(LocalFigures::percent(std::lround(std::clamp(*marks.progress, 0.0, 1.0) * 100)));
  return parts.join(u", "_s);
}

void paintAppGround(QPainter& painter, const QRectF& rect, const TileStyle& style) {
  TileStyle bare = style;
  bare.filled = false;
  paintTileGround(painter, rect, bare);
}

void paintRunningApp(QPainter& painter, const QRectF& rect, const QString& name, const QString& icon,
                     const AppMarks& marks, const TileStyle& style) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (style.grounded) paintAppGround(painter, rect, style);
  magnify(painter, rect, tileFactor(style));
  enterTile(painter, rect, style);
  TileCanvas canvas(painter, rect.width() / style.scale, style);
  const QRectF box(theme::kAppIconLeft, theme::kAppIconTop, theme::kAppIcon, theme::kAppIcon);
  drawAppIcon(canvas, box, icon, name);
  drawAppMarks(canvas, box, marks);
  painter.restore();
}

}  // namespace tarnwick
