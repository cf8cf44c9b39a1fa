#include "views/theme/Emoji.h"

#include <QFontMetricsF>
#include <QPixmapCache>
#include <algorithm>
#include <cmath>

#include "views/theme/Typography.h"
#include "views/theme/Upright.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Fonts of emoji hold pictures of one size, so the picture is taken large and made smaller once.
constexpr int kTaken = 96;

QPixmap pictureOf(const QString& emoji, int side) {
  QFont font;
  font.setFamilies({u"Noto Color Emoji"_s, Typography::family()});
  font.setPixelSize(kTaken);
  // The other bounding box has no width when a character in it only chooses the variant of the one before.
  const QRectF ink = QFontMetricsF(font).tightBoundingRect(emoji);
  const double extent = std::max({ink.width(), ink.height(), 1.0});
  const int taken = static_cast<int>(std::ceil(extent)) + 2;
  QImage image(taken, taken, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setFont(font);
  painter.drawText(QPointF(taken / 2.0, taken / 2.0) - ink.center(), emoji);
  painter.end();
  return QPixmap::fromImage(image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

}  // namespace

void drawEmoji(QPainter& painter, const QString& emoji, const QRectF& box) {
  const QTransform transform = painter.deviceTransform();
  const double unit = std::hypot(transform.m11(), transform.m12());
  const int side = std::max(1, static_cast<int>(std::lround(std::min(box.width(), box.height()) * unit)));
  const QString key = u"emoji %1 %2"_s.arg(emoji).arg(side);
  QPixmap picture;
  if (!QPixmapCache::find(key, &picture)) {
    picture = pictureOf(emoji, side);
    QPixmapCache::insert(key, picture);
  }
  const double drawn = side / unit;
  painter.save();
  keepUpright(painter, box.center().x());
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawPixmap(QRectF(box.center().x() - drawn / 2, box.center().y() - drawn / 2, drawn, drawn), picture,
                     picture.rect());
  painter.restore();
}

}  // namespace tarnwick
