#include "views/theme/Bands.h"

#include <algorithm>

namespace tarnwick {

namespace {
/// Device pixels. Even the upper end of a ring has fewer runs in as many rows than Qt counts to.
constexpr int kBand = 8;
}  // namespace

void inBands(QPainter& painter, const QRectF& bounds, const std::function<void()>& draw) {
  const QTransform transform = painter.deviceTransform();
  QRect device = transform.mapRect(bounds).toAlignedRect().adjusted(-1, -1, 1, 1);
  if (device.height() <= kBand || transform.type() > QTransform::TxScale) {
    draw();
    return;
  }
  if (painter.hasClipping()) device &= transform.mapRect(painter.clipBoundingRect()).toAlignedRect();
  const QTransform back = transform.inverted();
  for (int y = device.top(); y <= device.bottom(); y += kBand) {
    const int height = std::min(kBand, device.bottom() + 1 - y);
    painter.save();
    painter.setClipRect(back.mapRect(QRectF(device.left(), y, device.width(), height)), Qt::IntersectClip);
    draw();
    painter.restore();
  }
}

}  // namespace tarnwick
