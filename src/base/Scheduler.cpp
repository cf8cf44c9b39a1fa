#include "base/Scheduler.h"

#include <QTimer>
#include <chrono>
#include <cmath>

namespace tarnwick {
namespace {

// Waking a little late keeps an aligned beat from firing just before the second turns, which would show the old one.
constexpr int kAfterTheSecondMs = 4;

class TimerJob final : public Job {
 public:
  TimerJob(std::function<void()> work, int milliseconds, bool repeats, bool aligned)
      : work_(std::move(work)), timer_(new QTimer), period_(milliseconds), repeats_(repeats), aligned_(aligned) {
    timer_->setSingleShot(!repeats || aligned);
    timer_->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer_, &QTimer::timeout, timer_, [this] { fire(); });
    timer_->start(aligned_ ? untilTheNextBeat() : period_);
  }

  ~TimerJob() override {
    // The job may be cancelled by its own work, while the timer is still emitting.
    timer_->stop();
    timer_->disconnect();
    timer_->deleteLater();
  }

 private:
  int untilTheNextBeat() const {
    const qint64 into = QDateTime::currentMSecsSinceEpoch() % period_;
    const int left = static_cast<int>(period_ - into) + kAfterTheSecondMs;
    // A beat that just fired early must not fire twice for one second.
    return left <= 2 * kAfterTheSecondMs ? left + period_ : left;
  }

  void fire() {
    if (repeats_ && aligned_) timer_->start(untilTheNextBeat());
    // The work may destroy this job, and with it the function that is running.
    const auto work = work_;
    work();
  }

  std::function<void()> work_;
  QTimer* timer_;
  int period_;
  bool repeats_;
  bool aligned_;
};

int milliseconds(double seconds) { return static_cast<int>(std::lround(std::clamp(seconds, 0.0, 86400.0) * 1000)); }

}  // namespace

QDateTime SystemScheduler::now() const { return QDateTime::currentDateTime(); }

double SystemScheduler::reference() const {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

JobHandle SystemScheduler::after(double seconds, std::function<void()> work) {
  return std::make_unique<TimerJob>(std::move(work), milliseconds(seconds), false, false);
}

JobHandle SystemScheduler::every(double seconds, std::function<void()> work) {
  const int period = std::max(1, milliseconds(seconds));
  return std::make_unique<TimerJob>(std::move(work), period, true, period % 1000 == 0);
}

}  // namespace tarnwick
