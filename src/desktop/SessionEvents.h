#pragma once

#include <QObject>

namespace tarnwick {

/// What happens to the machine and the session around the program.
class SessionEvents : public QObject {
  Q_OBJECT
 public:
  /// Whether it is known if the session is locked; `lockKnown` tells when it is.
  virtual bool isLockKnown() const { return true; }

 Q_SIGNALS:
  /// The machine goes to sleep; listeners have about a second.
  void willSleep();
  void didWake();
  /// The session or the machine ends: save now and give everything back.
  void ending();
  /// Somebody must unlock the session before it can be used again, or has. It is not locked until this says so.
  void lockedChanged(bool locked);
  void lockKnown();
};

}  // namespace tarnwick
