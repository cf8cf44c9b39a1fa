#include "platform/wayland/LayerWindow.h"

#include <utility>

namespace tarnwick {

LayerWindow::~LayerWindow() { drop(); }

void LayerWindow::setScreen(QScreen& screen) {
  screen_ = &screen;
  if (window().screen() != &screen) window().setScreen(&screen);
}

void LayerWindow::setLook(const LayerLook& look) {
  look_ = look;
  if (!role_) return;
  if (session().judgesKeysOnce() && wanted().takesKeys != takesKeys_) {
    renew();
  } else {
    role_->setLook(wanted());
  }
}

void LayerWindow::borrowKeys(bool borrows) {
  if (std::exchange(borrowsKeys_, borrows) != borrows) setLook(look_);
}

LayerLook LayerWindow::wanted() const {
  LayerLook look = look_;
  look.takesKeys = look.takesKeys || borrowsKeys_;
  return look;
}

bool LayerWindow::assign(wl_surface* surface) {
  wl_output* output = screen_ ? WaylandSession::outputOf(*screen_) : nullptr;
  if (!output) return false;
  takesKeys_ = wanted().takesKeys;
  LayerSurface::Listener listener;
  listener.closed = [this] { reportClosed(); };
  role_ = std::make_unique<LayerSurface>(session(), surface, output, wanted(), std::move(listener));
  return !role_->isClosed();
}

}  // namespace tarnwick
