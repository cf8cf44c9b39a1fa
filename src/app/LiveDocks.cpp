#include "app/LiveDocks.h"

namespace tarnwick {

bool LiveDocks::remove(const QString& display, const LiveDock* dock) {
  const auto found = docks_.find(display);
  if (found == docks_.end() || found->second != dock) return false;
  docks_.erase(found);
  return true;
}

LiveDock* LiveDocks::of(const QString& display) const {
  const auto found = docks_.find(display);
  return found == docks_.end() ? nullptr : found->second;
}

DockView* LiveDocks::view(const QString& display) const {
  LiveDock* dock = of(display);
  return dock ? &dock->view() : nullptr;
}

LiveDocks::Dock LiveDocks::ofOrFirst(const QString& display) const {
  if (LiveDock* dock = of(display)) return {display, dock};
  if (docks_.empty()) return {};
  return {docks_.begin()->first, docks_.begin()->second};
}

QRect LiveDocks::glass(const QString& display) const {
  const DockView* dock = view(display);
  return dock ? dock->glassRect().toAlignedRect() : QRect();
}

QRect LiveDocks::besideWidget(const QString& display, const QUuid& widget) const {
  const DockView* dock = view(display);
  return !dock || dock->tileRect(widget).isEmpty() ? QRect() : dock->besideRect(widget);
}

QRect LiveDocks::besideApplication(const QString& display, quint64 application) const {
  const DockView* dock = view(display);
  const QRect beside = dock ? dock->besideApplication(application) : QRect();
  return beside.isEmpty() ? glass(display) : beside;
}

}  // namespace tarnwick
