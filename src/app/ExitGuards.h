#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <functional>

namespace tarnwick {

/// Turns SIGTERM, SIGINT and SIGHUP into a call on the main thread, so that a plain kill leaves the desktop as it was.
/// The handler proper only writes one byte. A SIGHUP that was ignored when the program began stays ignored. One
/// instance a process; the signals are the default's again when it goes.
class ExitGuards : public QObject {
  Q_OBJECT
 public:
  explicit ExitGuards(std::function<void()> onSignal, QObject* parent = nullptr);
  ~ExitGuards() override;

 private:
  std::function<void()> onSignal_;
  int ends_[2] = {-1, -1};
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace tarnwick
