#pragma once

namespace tarnwick {

/// A damped harmonic oscillator that carries a value to its target. It is solved, not simulated: a step of any length
/// lands exactly where many small ones would. A value; its owner may set the target at any time, and the motion
/// goes on from where it is with the velocity that it has.
struct RevealSpring {
  /// Below this distance from the target and this velocity it is at rest.
  static constexpr double kRest = 0.001;

  double value = 0;
  double velocity = 0;  ///< Per second.
  double target = 0;

  /// Goes on by `dt` seconds and returns whether it still moves. `response` is the undamped period in seconds,
  /// `damping` the damping ratio: below 1 it passes the target and returns, at 1 it arrives soonest without passing.
  /// Without time or without a period it jumps to the target.
  bool step(double dt, double response, double damping);
  bool isAtRest() const;
  void jump();
};

}  // namespace tarnwick
