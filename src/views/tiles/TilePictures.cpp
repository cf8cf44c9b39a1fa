#include "views/tiles/TilePictures.h"

#include <algorithm>
#include <cmath>

#include "views/theme/Glass.h"
#include "views/tiles/TilePainter.h"

namespace tarnwick {

namespace {

constexpr qsizetype kStates = 2;
constexpr int kSpace = 1;  ///< Clear device pixels on every side, into which the edges of a swollen tile fade.
/// Device pixels. A scaled picture of more rows at once would wake Qt's worker threads.
constexpr int kMostRows = 64;

}  // namespace

bool TilePictures::hasPicture(const TileStyle& style) {
  return style.state != TileState::Dragged && style.iconOpacity == 1 && style.loading == TileStyle().loading;
}

bool TilePictures::Picture::looksLike(const Picture& other) const {
  return state == other.state && focused == other.focused && takesDrop == other.takesDrop && editing == other.editing &&
         size == other.size && ratio == other.ratio;
}

void TilePictures::draw(QPainter& painter, qsizetype item, const QRectF& place, const TileStyle& style,
                        const Paint& paint) {
  if (item >= items_.size()) items_.resize(item + 1);
  Item& pictures = items_[item];
  Picture wanted{style.state, style.focused, style.takesDrop, style.editing, place.size(), 1 / hairline(painter)};
  const auto found = std::ranges::find_if(pictures, [&](const Picture& each) { return each.looksLike(wanted); });
  if (found != pictures.end()) {
    std::rotate(pictures.begin(), found, found + 1);
  } else {
    const QSize pixels = (place.size() * wanted.ratio).toSize() + QSize(kSpace, kSpace) * 2;
    wanted.image = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    wanted.image.fill(Qt::transparent);
    QPainter layer(&wanted.image);
    layer.translate(kSpace, kSpace);
    layer.scale(wanted.ratio, wanted.ratio);
    layer.translate(-place.topLeft());
    TileStyle own = style;
    own.magnification = 1;
    if (own.state == TileState::Pressed) own.magnification = 1 / tileFactor(own);
    paint(layer, own);
    layer.end();
    if (pictures.size() == kStates) pictures.removeLast();
    pictures.prepend(wanted);
  }
  drawSwollen(painter, place, pictures.first(), tileFactor(style));
}

void TilePictures::drawSwollen(QPainter& painter, const QRectF& place, const Picture& picture, double factor) {
  painter.save();
  magnify(painter, place, factor);
  painter.translate(place.topLeft());
  painter.scale(1 / picture.ratio, 1 / picture.ratio);
  const QRect whole(QPoint(-kSpace, -kSpace), picture.image.size());
  if (factor == 1) {
    painter.drawImage(whole.topLeft(), picture.image);
  } else {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QTransform transform = painter.deviceTransform();
    const QRect device = transform.mapRect(QRectF(whole)).toAlignedRect();
    const QTransform back = transform.inverted();
    for (int y = device.top(); y <= device.bottom(); y += kMostRows) {
      painter.save();
      painter.setClipRect(back.mapRect(QRectF(device.left(), y, device.width(), kMostRows)), Qt::IntersectClip);
      painter.drawImage(whole.topLeft(), picture.image);
      painter.restore();
    }
  }
  painter.restore();
}

void TilePictures::forget(qsizetype item) {
  if (item < items_.size()) items_[item].clear();
}

}  // namespace tarnwick
