#include "motion/SpringDriver.h"

#include <QWidget>
#include <utility>

#include "base/ProbeCounters.h"

namespace tarnwick {

SpringDriver::SpringDriver(QWidget* view, std::unique_ptr<FrameClock> clock, std::function<void(double)> onChange)
    : animator_(std::move(clock)), view_(view), onChange_(std::move(onChange)) {}

SpringDriver::~SpringDriver() = default;

void SpringDriver::animate(double to, MotionStyle style, bool animated, bool reduceMotion) {
  if (to == spring_.target && spring_.isAtRest()) return;
  spring_.target = to;
  parameters_ = MotionParameters::of(style, reduceMotion);
  if (animated && view_ && view_->isVisible()) {
    animator_.run(*this);
  } else {
    animator_.stop(*this);
    finish();
  }
}

bool SpringDriver::advance(double seconds) {
  ProbeCounters::count("revealFrame");
  const bool moves = spring_.step(seconds, parameters_.response, parameters_.damping);
  onChange_(spring_.value);
  return moves || !spring_.isAtRest();  // A listener may have asked for another target.
}

void SpringDriver::finish() {
  spring_.jump();
  onChange_(spring_.value);
}

}  // namespace tarnwick
