#include "desktop/ZoneMath.h"

namespace tarnwick {

PointerZones ZoneMath::zones(const QPointF& pointer, const QRectF& screen, const QRectF& panel, double triggerSize) {
  const QRectF around =
      panel.adjusted(-kAroundHorizontally, -kAroundVertically, kAroundHorizontally, kAroundVertically);
  const double x = pointer.x();
  const double y = pointer.y();
  // A position names the upper left corner of a pixel; at the bottom edge the pixel's lower side is what touches it.
  const double lower = y + 1;
  const bool onScreen = x >= screen.left() && x <= screen.right();
  return {!panel.isEmpty() && x >= around.left() && x <= around.right() && y >= around.top() && y <= around.bottom(),
          onScreen && lower > screen.bottom() - triggerSize && y <= screen.bottom(),
          onScreen && y >= screen.top() && y < screen.top() + triggerSize};
}

}  // namespace tarnwick
