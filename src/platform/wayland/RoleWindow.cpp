#include "platform/wayland/RoleWindow.h"

#include <qpa/qplatformwindow.h>
#include <QPlatformSurfaceEvent>
#include <utility>

namespace tarnwick {

RoleWindow::RoleWindow(const WaylandSession& session, QWindow& window)
    : QObject(&window), session_(session), window_(window) {
  window.installEventFilter(this);
  follow();
}

RoleWindow* RoleWindow::of(const QWindow* window) {
  return window ? window->findChild<RoleWindow*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

void RoleWindow::setInput(const std::optional<QRegion>& region) {
  if (std::exchange(input_, region) == region || !hasRole()) return;
  wl_surface* surface = WaylandSession::surfaceOf(window_);
  if (!surface) return;
  applyInput(surface);
  wl_surface_commit(surface);
}

void RoleWindow::prepare() {
  window_.setFlags(window_.flags() | Qt::BypassWindowManagerHint);
  if (!window_.handle()) window_.create();
  give();
}

bool RoleWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &window_ && event->type() == QEvent::PlatformSurface) {
    const auto* surface = static_cast<QPlatformSurfaceEvent*>(event);
    if (surface->surfaceEventType() == QPlatformSurfaceEvent::SurfaceCreated) {
      follow();
    } else {
      drop();
    }
  }
  return false;
}

// The surface comes when the window is shown and goes when it is hidden; the role must go first. Only the platform's
// own window reports when, by signals that are in no public header.
void RoleWindow::follow() {
  auto* native = dynamic_cast<QObject*>(window_.handle());
  if (!native) return;
  connect(native, SIGNAL(wlSurfaceCreated()), this, SLOT(give()), Qt::UniqueConnection);
  connect(native, SIGNAL(wlSurfaceDestroyed()), this, SLOT(drop()), Qt::UniqueConnection);
}

void RoleWindow::give() {
  if (hasRole()) return;
  wl_surface* surface = WaylandSession::surfaceOf(window_);
  if (!surface) return;
  applyInput(surface);
  if (!assign(surface)) reportClosed();
}

void RoleWindow::drop() {
  if (!hasRole()) return;
  Q_EMIT dropped();
  release();
}

void RoleWindow::renew() {
  drop();
  wl_surface* surface = WaylandSession::surfaceOf(window_);
  if (!surface) return;
  wl_surface_attach(surface, nullptr, 0, 0);
  wl_surface_commit(surface);
  give();
  Q_EMIT cleared();
}

void RoleWindow::applyInput(wl_surface* surface) const {
  if (!input_) {
    wl_surface_set_input_region(surface, nullptr);
    return;
  }
  wl_surface_set_input_region(surface, session_.region(*input_).get());
}

void RoleWindow::reportClosed() { QMetaObject::invokeMethod(this, &RoleWindow::closed, Qt::QueuedConnection); }

}  // namespace tarnwick
