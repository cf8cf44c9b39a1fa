#pragma once

#include <QDBusConnection>
#include <memory>

#include "desktop/SessionEvents.h"
#include "platform/dbus/BusService.h"
#include "platform/dbus/LoginInhibitor.h"

namespace tarnwick {

/// Sleep, waking, the end of the machine and of the session that this program is in, and whether the session is locked,
/// as the login manager announces them; when the last session of the user went, that too is an end. Sleep and shutdown
/// are held back by a delay lock until everybody who listens has had the signal. Without a system bus or a login
/// manager nothing is announced.
class LoginSessionEvents final : public SessionEvents {
  Q_OBJECT
 public:
  /// Listens at once.
  explicit LoginSessionEvents(const QDBusConnection& system, QObject* parent = nullptr);

  bool isLockKnown() const override { return isLockKnown_; }

 private:
  void prepareForSleep(bool begins);
  void prepareForShutdown(bool begins);
  void releaseBehindTheHandlers();
  void findSession();
  bool isOurs(const QDBusMessage& removed) const;
  void findLock();
  void setLocked(bool locked);
  void learnLock();

  BusService login_;
  LoginInhibitor delay_;
  QString sessionId_;
  QString sessionPath_;
  std::unique_ptr<BusProperties> session_;  ///< That of the lock; null until it was found.
  bool isLocked_ = false;
  bool isLockKnown_ = false;
};

}  // namespace tarnwick
