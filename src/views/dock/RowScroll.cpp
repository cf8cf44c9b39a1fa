#include "views/dock/RowScroll.h"

#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "views/theme/Theme.h"

namespace tarnwick {

namespace {

const QString kTravel = QStringLiteral("scroll");

}  // namespace

RowScroll::RowScroll(const RowTiles& tiles, Animator& animator, std::function<void()> scrolled)
    : tiles_(tiles),
      scrolled_(std::move(scrolled)),
      edges_(tiles.row(), tiles.layout(), animator, [this](double units) { return by(units); }),
      travel_(animator) {
  QObject::connect(&travel_, &SpringSet::moved, &travel_, [this] { moveTo(travel_.value(kTravel)); });
}

void RowScroll::moveTo(double position) {
  position = std::clamp(position, 0.0, tiles_.layout().overflow);
  if (std::exchange(position_, position) != position) scrolled_();
}

bool RowScroll::by(double units) {
  travel_.clear();
  const double before = position_;
  moveTo(before + units);
  return position_ != before;
}

void RowScroll::turnPage(int direction) {
  const RowLayout& layout = tiles_.layout();
  const double page =
      std::max(layout.middle.width() / 2, layout.middle.width() - theme::kEndFade * 2 * tiles_.row().scale);
  const double from = travel_.isMoving() ? travel_.goal(kTravel) : position_;
  const double goal = std::clamp(from + direction * page, 0.0, layout.overflow);
  if (tiles_.row().reduceMotion || !tiles_.surface().isVisible()) {
    by(goal - position_);
    return;
  }
  travel_.setRatio(tiles_.ratio());
  if (!travel_.isMoving()) travel_.jump(kTravel, position_);
  travel_.animate(kTravel, goal);
}

void RowScroll::reset() {
  travel_.clear();
  position_ = 0;
}

void RowScroll::reveal(qsizetype item) {
  const RowLayout& layout = tiles_.layout();
  if (layout.overflow <= 0 || layout.items[item].stays) return;
  const double space = (theme::kInset + theme::kEndFade) * tiles_.row().scale;
  const QRectF& place = layout.items[item].rect;
  const double beyondLeft = layout.middle.left() + space - place.left();
  const double beyondRight = place.right() + space - layout.middle.right();
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
