#pragma once

#include <QDateTime>
#include <functional>
#include <memory>

namespace tarnwick {

/// A delayed or repeating piece of work. Destroying or resetting the handle cancels it; the work never runs afterwards.
class Job {
 public:
  virtual ~Job() = default;

 protected:
  Job() = default;
  Job(const Job&) = delete;
  Job& operator=(const Job&) = delete;
};
using JobHandle = std::unique_ptr<Job>;

/// Time, and work that waits for it. Main thread only; work runs on the main thread, never inside the call that
/// schedules it. The running program uses SystemScheduler; tests use a scheduler whose clock they set, so nothing ever
/// waits.
class Scheduler {
 public:
  virtual ~Scheduler() = default;

  /// The wall clock, in local time.
  virtual QDateTime now() const = 0;
  /// Seconds on a clock that never jumps; only differences mean anything.
  virtual double reference() const = 0;

  /// Runs `work` once after `seconds`. The handle must be kept.
  [[nodiscard]] virtual JobHandle after(double seconds, std::function<void()> work) = 0;
  /// Runs `work` every `seconds`. A period of a whole second is aligned to the wall clock's second, so that one wake-up
  /// serves everything that shows seconds.
  [[nodiscard]] virtual JobHandle every(double seconds, std::function<void()> work) = 0;
};

/// The scheduler of the running program, on Qt's event loop.
class SystemScheduler final : public Scheduler {
 public:
  QDateTime now() const override;
  double reference() const override;
  JobHandle after(double seconds, std::function<void()> work) override;
  JobHandle every(double seconds, std::function<void()> work) override;
};

}  // namespace tarnwick
