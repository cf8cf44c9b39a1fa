#include "motion/SpringSet.h"

#include <algorithm>
#include <cmath>

#include "motion/MotionStyle.h"

namespace tarnwick {

namespace {

constexpr double kLongest = 0.4;   // Seconds that anything is seen to move.
constexpr double kLanding = 0.2;   // The last of them, in which the goal is reached whatever the spring does.
constexpr double kNothing = 0.25;  // Device pixels; too little to see.

}  // namespace

double SpringSet::Travel::seen() const {
  const double left = std::clamp((kLongest - age) / kLanding, 0.0, 1.0);
  return spring.target + (spring.value - spring.target) * (moving ? left * left * (3 - 2 * left) : 1);
}

void SpringSet::animate(const QString& name, double goal) {
  Travel& travel = travels_[name];
  if (travel.spring.target == goal && (travel.moving || travel.spring.value == goal)) return;
  travel.spring.value = travel.seen();
  travel.spring.target = goal;
  travel.age = 0;
  travel.moving = true;
  animator_.run(*this);
}

void SpringSet::jump(const QString& name, double value) { travels_[name] = {{value, 0, value}, 0, false}; }

void SpringSet::settle() {
  for (const QString& name : travels_.keys()) animate(name, 0);
}

void SpringSet::clear() {
  travels_.clear();
  animator_.stop(*this);
}

bool SpringSet::step(Travel& travel, double seconds) const {
  const MotionParameters motion = MotionParameters::of(MotionStyle::Reveal, reduced_);
  travel.age += seconds;
  RevealSpring& spring = travel.spring;
  travel.moving = spring.step(seconds, motion.response, motion.damping);
  // The spring rests within a thousandth; here lengths are pixels.
  const bool seen = std::abs(spring.value - spring.target) * ratio_ >= kNothing;
  if ((!seen && std::abs(spring.velocity) * ratio_ < kNothing / kLongest) || travel.age >= kLongest) {
    spring.jump();
    travel.moving = false;
  }
  return travel.moving;
}

bool SpringSet::advance(double seconds) {
  const auto pixel = [this](double value) { return std::lround(value * ratio_); };
  bool seen = false;
  bool moving = false;
  for (Travel& travel : travels_) {
    if (!travel.moving) continue;
    const double before = travel.seen();
    moving = step(travel, seconds) || moving;
    seen = seen || pixel(before) != pixel(travel.seen()) || !travel.moving;
  }
  // Listeners of the end must find it at rest.
  if (!moving) animator_.stop(*this);
  if (seen) Q_EMIT moved();
  if (!moving) Q_EMIT rested();
  return isMoving();
}

void SpringSet::finish() {
  for (Travel& travel : travels_) {
    travel.spring.jump();
    travel.moving = false;
  }
  Q_EMIT moved();
  Q_EMIT rested();
}

}  // namespace tarnwick
