#include "motion/Fade.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

Fade::Fade(Animator& animator, double seconds, std::function<void()> changed, std::function<void()> arrived)
    : animator_(animator), seconds_(seconds), changed_(std::move(changed)), arrived_(std::move(arrived)) {}

void Fade::fadeTo(double goal) {
  goal_ = goal;
  if (value_ == goal_)
    animator_.stop(*this);
  else
    animator_.run(*this);
}

void Fade::restart() {
  value_ = 0;
  fadeTo(1);
}

void Fade::jump(double value) {
  animator_.stop(*this);
  value_ = goal_ = value;
}

bool Fade::advance(double seconds) {
  const double way = seconds / seconds_;
  value_ = value_ < goal_ ? std::min(value_ + way, goal_) : std::max(value_ - way, goal_);
  if (value_ == goal_) {
    arrive();
    return value_ != goal_;  // A listener may have started it again.
  }
  changed_();
  return true;
}

void Fade::finish() {
  value_ = goal_;
  arrive();
}

void Fade::arrive() {
  changed_();
  if (arrived_) arrived_();
}

}  // namespace tarnwick
