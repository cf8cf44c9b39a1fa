#include "platform/wayland/OutsideCatcher.h"

#include <QGuiApplication>
#include <QScreen>

namespace tarnwick {

OutsideCatcher::OutsideCatcher(const WaylandSession& session, const QRegion& open) : session_(session), open_(open) {
  for (QScreen* screen : QGuiApplication::screens()) follow(screen);
  // Displays come and go while something is open.
  connect(qGuiApp, &QGuiApplication::screenAdded, this, &OutsideCatcher::follow);
  connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this](QScreen* screen) { windows_.erase(screen); });
}

void OutsideCatcher::setOpen(const QRegion& open) {
  open_ = open;
  for (const auto& [screen, window] : windows_) leaveOpen(*window, screen->geometry());
}

void OutsideCatcher::follow(QScreen* screen) {
  if (!WaylandSession::outputOf(*screen)) return;
  auto window = std::make_unique<ClearWindow>(session_);
  // It is not destroyed while it reports the click.
  connect(window.get(), &ClearWindow::pressed, this, &OutsideCatcher::caught, Qt::QueuedConnection);
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
  window.setInput(QRegion(QRect(QPoint(), screen.size())) - open_.translated(-screen.topLeft()));
}

}  // namespace tarnwick
