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
    if (pointer.x() < layout_.glass.left() + zone) direction_ = -right;
    if (pointer.x() > layout_.glass.right() - zone) direction_ = right;
  }
  direction_ == 0 ? animator_.stop(*this) : animator_.run(*this);
}

void EdgeScroll::letGo() {
  direction_ = 0;
  animator_.stop(*this);
}

bool EdgeScroll::advance(double seconds) { return scroll_(direction_ * theme::kEdgeScroll * seconds); }

}  // namespace tarnwick
