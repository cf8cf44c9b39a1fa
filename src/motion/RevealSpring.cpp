#include "motion/RevealSpring.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tarnwick {
namespace {

/// Displacement from the target, and velocity.
struct Motion {
  double x;
  double v;
};

Motion underDamped(const Motion& from, double w, double z, double t) {
  const double wd = w * std::sqrt(1 - z * z);
  const double a = from.x;
  const double b = (z * w * from.x + from.v) / wd;
  const double e = std::exp(-z * w * t);
  const double cosine = std::cos(wd * t);
  const double sine = std::sin(wd * t);
  return {e * (a * cosine + b * sine), e * (cosine * (wd * b - z * w * a) - sine * (wd * a + z * w * b))};
}

Motion criticallyDamped(const Motion& from, double w, double t) {
  const double c = from.v + w * from.x;
  const double e = std::exp(-w * t);
  const double x = from.x + c * t;
  return {e * x, e * (c - w * x)};
}

Motion overDamped(const Motion& from, double w, double z, double t) {
  // The slower root as a quotient: as a difference it would lose its digits under a strong damping.
  const double r2 = -z * w - w * std::sqrt(z * z - 1);
  const double r1 = w * w / r2;
  const double c2 = (from.v - r1 * from.x) / (r2 - r1);
  const double c1 = from.x - c2;
  const double slow = c1 * std::exp(r1 * t);
  const double fast = c2 * std::exp(r2 * t);
  return {slow + fast, r1 * slow + r2 * fast};
}

}  // namespace

bool RevealSpring::step(double dt, double response, double damping) {
  if (!(response > 0) || !(dt > 0)) {
    jump();
    return false;
  }
  const double w = 2 * std::numbers::pi / response;
  const double z = std::max(0.0, damping);
  const Motion from{value - target, velocity};
  const Motion to = z < 1    ? underDamped(from, w, z, dt)
                    : z == 1 ? criticallyDamped(from, w, dt)
                             : overDamped(from, w, z, dt);
  value = target + to.x;
  velocity = to.v;
  if (!isAtRest()) return true;
  value = target;
  return false;
}

bool RevealSpring::isAtRest() const { return std::abs(value - target) < kRest && std::abs(velocity) < kRest; }

void RevealSpring::jump() {
  value = target;
  velocity = 0;
}

}  // namespace tarnwick
