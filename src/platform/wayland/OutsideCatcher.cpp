#include "platform/wayland/OutsideCatcher.h"

#include <QDrag>
#include <QGuiApplication>
#include <QScreen>
#include <chrono>

namespace tarnwick {
namespace {

/// On its way from one thing that is open to the next a drag is outside for less.
constexpr std::chrono::milliseconds kAway{700};

}  // namespace

OutsideCatcher::OutsideCatcher(const WaylandSession& session, const QRegion& open) : session_(session), open_(open) {
  away_.setSingleShot(true);
  away_.setInterval(kAway);
  connect(&away_, &QTimer::timeout, this, &OutsideCatcher::caught);
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
  if (drag_ != Drag::None) return;
  const auto* drag = source ? source->findChild<QDrag*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
  if (drag) {
    connect(drag, &QObject::destroyed, this, [this] { let(Drag::None); });
  } else {
    away_.start();
  }
  let(drag ? Drag::Own : Drag::Foreign);
}

void OutsideCatcher::setDraggedWithin(bool isWithin) {
  if (drag_ != Drag::Foreign) return;
  if (isWithin) {
    away_.stop();
  } else {
    away_.start();
  }
}

void OutsideCatcher::endDrag() {
  if (drag_ != Drag::Foreign) return;
  away_.stop();
  let(Drag::None);
}

void OutsideCatcher::let(Drag drag) {
  drag_ = drag;
  leaveOpen();
}

void OutsideCatcher::follow(QScreen* screen) {
  if (!WaylandSession::outputOf(*screen)) return;
  auto window = std::make_unique<ClearWindow>(session_);
  // It is not destroyed while it reports the click.
  connect(window.get(), &ClearWindow::pressed, this, &OutsideCatcher::caught, Qt::QueuedConnection);
  connect(window.get(), &ClearWindow::dragMet, this, &OutsideCatcher::letThrough, Qt::QueuedConnection);
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
  window.setInput(drag_ != Drag::None ? QRegion() : whole - open_.translated(-screen.topLeft()));
}

}  // namespace tarnwick
