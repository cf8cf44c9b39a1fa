#pragma once

namespace tarnwick {

/// How something that travels feels.
enum class MotionStyle {
  Reveal,  ///< A dock that comes and goes.
  Quick,   ///< A small panel.
  Lively,  ///< Passes its target a little and returns.
};

/// The spring of a motion style; see RevealSpring::step.
struct MotionParameters {
  double response = 0.4;  ///< Seconds.
  double damping = 1;

  /// With reduced motion every style has the same short spring, whose value then only fades.
  static MotionParameters of(MotionStyle style, bool reduceMotion);

  bool operator==(const MotionParameters&) const = default;
};

}  // namespace tarnwick
