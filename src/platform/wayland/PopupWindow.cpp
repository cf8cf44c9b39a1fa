#include "platform/wayland/PopupWindow.h"

#include <utility>

namespace tarnwick {

PopupWindow::~PopupWindow() { drop(); }

void PopupWindow::setParent(RoleWindow& parent) {
  if (parent_) parent_->disconnect(this);
  parent_ = &parent;
  connect(&parent, &RoleWindow::dropped, this, [this] {
    if (!hasRole()) return;
    drop();
    reportClosed();
  });
}

LayerWindow* PopupWindow::layer() const {
  if (const auto* above = qobject_cast<PopupWindow*>(parent_)) return above->layer();
  return qobject_cast<LayerWindow*>(parent_);
}

void PopupWindow::setPlace(const QRect& place) {
  if (std::exchange(place_, place) != place && hasRole()) renew();
}

bool PopupWindow::assign(wl_surface* surface) {
  const auto closed = [this] { reportClosed(); };
  if (const auto* above = qobject_cast<PopupWindow*>(parent_); above && above->role_) {
    const QRect place = place_.translated(-above->place_.topLeft());
    role_ = std::make_unique<PopupSurface>(session(), surface, *above->role_, place, closed);
  } else if (const auto* layer = qobject_cast<LayerWindow*>(parent_); layer && layer->role()) {
    const QRect place = place_.translated(-layer->window().geometry().topLeft());
    role_ = std::make_unique<PopupSurface>(session(), surface, *layer->role(), place, closed);
  }
  return role_ && !role_->isClosed();
}

}  // namespace tarnwick
