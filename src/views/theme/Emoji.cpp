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

constexpr QChar kAsPicture(0xFE0F);

QPixmap pictureOf(QString emoji, int side) {
  // Asked for by the font already. Where it stands within an emoji, other fonts would be looked through for it, and the
  // parts on its two sides would be drawn one by one.
  emoji.remove(kAsPicture);
  QFont font;
  font.setFamilies({u"Noto Color Emoji"_s, Typography::family()});
  font.setPixelSize(kTaken);
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

bool hasOwnColours(const QString& character) {
  if (character.size() != 1) return true;
  // Of the signs that are one unit these alone are pictures unless they are asked to be text.
  static const QString pictures = u"⌚⌛⏩⏪⏫⏬⏰⏳◽◾☔☕♈♉♊♋♌♍♎♏♐♑♒♓♿⚓⚡⚪⚫⚽⚾⛄⛅⛎⛔⛪⛲⛳⛵⛺⛽✅✊✋✨❌❎❓❔❕❗➕➖➗➰➿⬛⬜⭐⭕"_s;
  return pictures.contains(character);
}

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
