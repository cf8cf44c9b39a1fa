#include "dock/SpringDriver.h"

#include <QWidget>

#include "base/ProbeCounters.h"
#include "desktop/FrameClock.h"

namespace tarnwick {

SpringDriver::SpringDriver(QWidget* view, std::unique_ptr<FrameClock> clock, std::function<void(double)> onChange)
    : clock_(std::move(clock)), view_(view), onChange_(std::move(onChange)) {
  connect(clock_.get(), &FrameClock::frame, this, &SpringDriver::frame);
}

SpringDriver::~SpringDriver() = default;

bool SpringDriver::isMoving() const { return clock_->isRunning(); }

void SpringDriver::animate(double to, MotionStyle style, bool animated, bool reduceMotion) {
  if (to == spring_.target && spring_.isAtRest()) return;
  spring_.target = to;
  parameters_ = MotionParameters::of(style, reduceMotion);
  if (animated && view_ && view_->isVisible()) {
    if (clock_->isRunning()) return;
    lastTimestamp_ = 0;
    clock_->start();
    // A clock that cannot start must not leave the value where it is.
    if (clock_->isRunning()) return;
  }
  spring_.jump();
  stop();
  onChange_(spring_.value);
}

void SpringDriver::frame(double timestamp, double duration) {
  ProbeCounters::count("revealFrame");
  const double dt = lastTimestamp_ == 0 ? duration : timestamp - lastTimestamp_;
  // The same frame reported twice: no time has passed, which is no reason to jump.
  if (lastTimestamp_ != 0 && dt <= 0) return;
  lastTimestamp_ = timestamp;
  const bool moves = spring_.step(dt, parameters_.response, parameters_.damping);
  onChange_(spring_.value);
  if (!moves && spring_.isAtRest()) stop();
}

void SpringDriver::stop() {
  clock_->stop();
  lastTimestamp_ = 0;
}

}  // namespace tarnwick
