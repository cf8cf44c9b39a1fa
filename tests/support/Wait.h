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

/// The same, where something waits for a test's clock: that is due as soon as it is waited for, for a second at most.
template <class Clock>
bool waitFor(Clock& clock, const std::function<bool()>& holds) {
  return waitFor([&] {
    if (clock.waiting() > 0) clock.advance(1);
    return holds();
  });
}

}  // namespace tarnwick
