#include "views/families/files/StackedPicture.h"

#include <QPainterPath>

#include "views/theme/Glass.h"
#include "views/tiles/TileCanvas.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kStackedCorner = 4;

}  // namespace

void paintStackedPicture(TileCanvas& canvas, const QRectF& box, const QImage& image) {
  QPainter& painter = canvas.painter();
  painter.save();
  keepUpright(painter, box.center().x());
  drawRounded(painter, box, kStackedCorner, canvas.colors().well);
  if (image.isNull()) {
    canvas.symbol(u"photo"_s, box.center(), 16, canvas.colors().tertiary);
  } else {
    QPainterPath outline;
    outline.addRoundedRect(box, kStackedCorner, kStackedCorner);
    painter.setClipPath(outline, Qt::IntersectClip);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QSizeF whole = QSizeF(image.size());
    const QSizeF part = box.size().scaled(whole, Qt::KeepAspectRatio);
    const QPointF corner((whole.width() - part.width()) / 2, (whole.height() - part.height()) / 2);
    painter.drawImage(box, image, QRectF(corner, part));
  }
  painter.restore();
  drawInnerLine(painter, box, kStackedCorner, hairline(painter), canvas.colors().tileEdge);
}

}  // namespace tarnwick
