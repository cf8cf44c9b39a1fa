#pragma once

#include <QObject>

namespace tarnwick {

/// What happens to the machine and the session around the program.
class SessionEvents : public QObject {
  Q_OBJECT
 Q_SIGNALS:
  /// The machine goes to sleep; listeners have about a second.
  void willSleep();
  void didWake();
  /// The session or the machine ends: save now and give everything back.
  void ending();
};

}  // namespace tarnwick
