#include "views/dock/EdgeScroll.h"

#include <utility>

#include "views/theme/Theme.h"

namespace tarnwick {

EdgeScroll::EdgeScroll(const DockRow& row, const RowLayout& layout, Animator& animator,
                       std::function<bool(double units)> scroll)
    : row_(row), layout_(layout), animator_(animator), scroll_(std::move(scroll)) {}

void EdgeScroll::hold(QPointF pointer) {
  const double zone = theme::kEdgeZone * row_.scale;
  direction_ = 0;
  if (layout_.overflow > 0) {
    const int right = layout_.mirrored ? -1 : 1;
    const QRectF& middle = layout_.middle;
    // An end that stays takes what is held over it; beyond the glass there is nothing that would.
    const bool overLeftEnd = middle.left() > layout_.glass.left() && pointer.x() < middle.left();
    const bool overRightEnd = middle.right() < layout_.glass.right() && pointer.x() >= middle.right();
    if (pointer.x() < middle.left() + zone && !overLeftEnd) direction_ = -right;
    if (pointer.x() > middle.right() - zone && !overRightEnd) direction_ = right;
  }
  direction_ == 0 ? animator_.stop(*this) : animator_.run(*this);
}

void EdgeScroll::letGo() {
  direction_ = 0;
  animator_.stop(*this);
}

bool EdgeScroll::advance(double seconds) { return scroll_(direction_ * theme::kEdgeScroll * seconds); }

}  // namespace tarnwick
