#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

#include "base/FileDescriptor.h"
#include "desktop/FrameClock.h"

class QScreen;

namespace tarnwick {

/// Beats of a kernel timer. Each lies a whole number of periods after the start, so that a late one does not move those
/// after it; those that the main thread slept through are left out.
class TimerFrameClock final : public FrameClock {
  Q_OBJECT
 public:
  explicit TimerFrameClock(std::function<QScreen*()> screen) : screen_(std::move(screen)) {}
  ~TimerFrameClock() override { stop(); }

  void start() override;
  void stop() override;
  bool isRunning() const override { return notifier_ != nullptr; }

 private:
  double rate() const;
  void run();
  void beat();

  std::function<QScreen*()> screen_;
  FileDescriptor timer_;
  std::unique_ptr<QSocketNotifier> notifier_;
  qint64 period_ = 0;    ///< Nanoseconds.
  qint64 previous_ = 0;  ///< The latest beat, in nanoseconds of the steady clock.
};

}  // namespace tarnwick
