#include "views/families/media/CoverPainting.h"

#include <QPainterPath>

#include "views/theme/Symbols.h"
#include "views/theme/Upright.h"
#include "views/tiles/TileCanvas.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// The largest part from the middle of a picture that has the shape of a place.
QRectF middleOf(const QImage& picture, const QSizeF& shape) {
  const QSizeF part = shape.scaled(picture.size(), Qt::KeepAspectRatio);
  return {QPointF((picture.width() - part.width()) / 2, (picture.height() - part.height()) / 2), part};
}

}  // namespace

void paintCover(QPainter& painter, const QRectF& place, double corner, const QImage& cover, const Palette& colors,
                const QColor& accent) {
  QPainterPath outline;
  outline.addRoundedRect(place, corner, corner);
  if (cover.isNull()) {
    painter.fillPath(outline, colors.well);
    QColor ground = accent;
    constexpr double kTint = 0.16;
    ground.setAlphaF(static_cast<float>(kTint));
    painter.fillPath(outline, ground);
    const double size = std::min(place.width(), place.height()) * 0.42;
    QRectF box(0, 0, size, size);
    box.moveCenter(place.center());
    painter.save();
    keepUpright(painter, place.center().x());
    Symbols::draw(painter, u"music.note"_s, box, accent);
    painter.restore();
    return;
  }
  painter.save();
  painter.setClipPath(outline, Qt::IntersectClip);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  keepUpright(painter, place.center().x());
  painter.drawImage(place, cover, middleOf(cover, place.size()));
  painter.restore();
}

void paintCover(TileCanvas& canvas, const QRectF& place, double corner, const QImage& cover) {
  paintCover(canvas.painter(), place, corner, cover, canvas.colors(), canvas.accent());
}

}  // namespace tarnwick
