#pragma once

#include <QDBusConnection>
#include <memory>

#include "platform/dbus/BusService.h"
#include "platform/dbus/LoginInhibitor.h"
#include "platform/dbus/toggles/CookieInhibition.h"
#include "platform/dbus/toggles/ToggleSource.h"

namespace tarnwick {

/// Keeps the machine from sleeping (login manager) and the screen from going dark (screen saver service) while it is
/// on. Both locks end with the program. One of the two services is enough.
class KeepAwakeToggle final : public ToggleSource {
  Q_OBJECT
 public:
  KeepAwakeToggle(const QDBusConnection& session, const QDBusConnection& system);

  ToggleState state() const override;
  void set(bool on) override;
  void start() override;

 private:
  QDBusConnection session_;
  QDBusConnection system_;
  std::unique_ptr<BusService> login_;
  std::unique_ptr<LoginInhibitor> sleepLock_;
  std::unique_ptr<BusService> screenSaver_;
  std::unique_ptr<CookieInhibition> screenLock_;
  bool wanted_ = false;
};

}  // namespace tarnwick
