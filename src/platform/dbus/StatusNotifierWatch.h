#pragma once

#include <QDBusConnection>

#include "desktop/Tray.h"

class QDBusServiceWatcher;

namespace tarnwick {

/// A tray for status notifier items, the kind that is reached over the session bus.
class StatusNotifierWatch final : public Tray {
  Q_OBJECT
 public:
  explicit StatusNotifierWatch(const QDBusConnection& bus) : bus_(bus) {}

  /// Answers from within this call where there is no bus.
  void look() override;

 private:
  QDBusConnection bus_;
  QDBusServiceWatcher* watcher_ = nullptr;  // Owned by this.
};

}  // namespace tarnwick
