#include "platform/wayland/OutsideCatcher.h"

#include <QGuiApplication>
#include <QScreen>
#include <utility>

namespace tarnwick {

OutsideCatcher::OutsideCatcher(const WaylandSession& session, const QRegion& open) {
  for (QScreen* screen : QGuiApplication::screens()) {
    if (!WaylandSession::outputOf(*screen)) continue;
    auto window = std::make_unique<ClearWindow>(session);
    const QRect whole(QPoint(), screen->size());
    window->setInput(QRegion(whole) - open.translated(-screen->geometry().topLeft()));
    window->stand(*screen, whole, LayerLook::at(whole, Layer::Overlay));
    // It is not destroyed while it tells of the click.
    connect(window.get(), &ClearWindow::pressed, this, &OutsideCatcher::caught, Qt::QueuedConnection);
    windows_.push_back(std::move(window));
  }
}

void OutsideCatcher::setOpen(const QRegion& open) {
  for (const auto& window : windows_) {
    window->setInput(QRegion(QRect(QPoint(), window->size())) - open.translated(-window->geometry().topLeft()));
  }
}

}  // namespace tarnwick
