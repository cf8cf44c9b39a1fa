#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>
#include <functional>

namespace tarnwick {

/// Runs the event loop until `holds`, for half a minute at most.
inline bool waitFor(const std::function<bool()>& holds) {
  // What no event of this process announces (a lock let go, a file of another program) is looked at now and then.
  QTimer wake;
  wake.start(20);
  const QDeadlineTimer deadline(30'000);
  while (!holds()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return true;
}

}  // namespace tarnwick
