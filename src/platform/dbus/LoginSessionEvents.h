#pragma once

#include <QDBusConnection>

#include "desktop/SessionEvents.h"
#include "platform/dbus/BusService.h"
#include "platform/dbus/LoginInhibitor.h"

namespace tarnwick {

/// Sleep, waking and the end of the machine, as the login manager announces them. Sleep and shutdown are held back by a
/// delay lock until everybody who listens has had the signal. Without a system bus or a login manager nothing is
/// announced.
class LoginSessionEvents final : public SessionEvents {
  Q_OBJECT
 public:
  /// Listens at once.
  explicit LoginSessionEvents(const QDBusConnection& system, QObject* parent = nullptr);

 private:
  void prepareForSleep(bool begins);
  void prepareForShutdown(bool begins);
  void releaseBehindTheHandlers();

  BusService login_;
  LoginInhibitor delay_;
};

}  // namespace tarnwick
