#include "platform/wayland/OutsideCatcher.h"

#include <QDrag>
#include <QGuiApplication>
#include <QScreen>
#include <utility>

namespace tarnwick {

OutsideCatcher::OutsideCatcher(const WaylandSession& session, const QRegion& open) : session_(session), open_(open) {
  for (QScreen* screen : QGuiApplication::screens()) follow(screen);
  // Displays come and go while something is open.
  connect(qGuiApp, &QGuiApplication::screenAdded, this, &OutsideCatcher::follow);
  connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this](QScreen* screen) { windows_.erase(screen); });
}

void OutsideCatcher::setOpen(const QRegion& open) {
  open_ = open;
  leaveOpen();
}

void OutsideCatcher::leaveOpen() {
  for (const auto& [screen, window] : windows_) leaveOpen(*window, screen->geometry());
}

// The compositor tells a program that something is dragged over it by what takes the pointer there.
void OutsideCatcher::letThrough(QObject* source) {
  const auto* drag = source->findChild<QDrag*>(QString(), Qt::FindDirectChildrenOnly);
  if (!drag || std::exchange(letsThrough_, true)) return;
  connect(drag, &QObject::destroyed, this, [this] {
    letsThrough_ = false;
    leaveOpen();
  });
  leaveOpen();
}

void OutsideCatcher::follow(QScreen* screen) {
  if (!WaylandSession::outputOf(*screen)) return;
  auto window = std::make_unique<ClearWindow>(session_);
  // It is not destroyed while it reports the click.
  connect(window.get(), &ClearWindow::pressed, this, &OutsideCatcher::caught, Qt::QueuedConnection);
  connect(window.get(), &ClearWindow::ownDragMet, this, &OutsideCatcher::letThrough, Qt::QueuedConnection);
  windows_[screen] = std::move(window);
  connect(screen, &QScreen::geometryChanged, this, [this, screen] { cover(*screen); });
  cover(*screen);
}

void OutsideCatcher::cover(QScreen& screen) {
  const auto window = windows_.find(&screen);
  if (window == windows_.end()) return;
  const QRect whole(QPoint(), screen.size());
  leaveOpen(*window->second, screen.geometry());
  window->second->stand(screen, whole, LayerLook::at(whole, Layer::Overlay));
}

void OutsideCatcher::leaveOpen(ClearWindow& window, const QRect& screen) const {
  const QRegion whole(QRect(QPoint(), screen.size()));
  window.setInput(letsThrough_ ? QRegion() : whole - open_.translated(-screen.topLeft()));
}

}  // namespace tarnwick
