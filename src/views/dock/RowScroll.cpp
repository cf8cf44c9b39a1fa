#include "views/dock/RowScroll.h"

#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "views/theme/Theme.h"

namespace tarnwick {

RowScroll::RowScroll(const RowTiles& tiles, Animator& animator, std::function<void()> scrolled)
    : tiles_(tiles),
      scrolled_(std::move(scrolled)),
      edges_(tiles.row(), tiles.layout(), animator, [this](double units) { return by(units); }) {}

bool RowScroll::by(double units) {
  const double position = std::clamp(position_ + units, 0.0, tiles_.layout().overflow);
  if (position == position_) return false;
  position_ = position;
  scrolled_();
  return true;
}

void RowScroll::reveal(qsizetype item) {
  const RowLayout& layout = tiles_.layout();
  if (layout.overflow <= 0) return;
  const double room = (theme::kInset + theme::kEndFade) * tiles_.row().scale;
  const QRectF& place = layout.items[item].rect;
  const double beyondLeft = layout.glass.left() + room - place.left();
  const double beyondRight = place.right() + room - layout.glass.right();
  const int onwards = layout.mirrored ? -1 : 1;
  if (beyondLeft > 0)
    by(-beyondLeft * onwards);
  else if (beyondRight > 0)
    by(beyondRight * onwards);
}

bool RowScroll::turn(const QWheelEvent& event) {
  if (tiles_.layout().overflow <= 0) return false;
  const QPointF pixels = event.pixelDelta().isNull() ? QPointF(event.angleDelta()) / 2 : QPointF(event.pixelDelta());
  // Sideways the row goes where the fingers do.
  const double sideways = tiles_.layout().mirrored ? -pixels.x() : pixels.x();
  by(-(std::abs(pixels.x()) > std::abs(pixels.y()) ? sideways : pixels.y()));
  return true;
}

void RowScroll::clamp() { position_ = std::clamp(position_, 0.0, tiles_.layout().overflow); }

}  // namespace tarnwick
