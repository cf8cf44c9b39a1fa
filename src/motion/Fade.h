#pragma once

#include <functional>

#include "motion/Animator.h"

namespace tarnwick {

/// A share that goes from 0 to 1 and back at an even pace. Turned on its way, it goes back from where it is.
class Fade final : public Animation {
 public:
  /// `seconds` for the whole way. `changed` is called with every new value, `arrived` when one has come to its goal.
  Fade(Animator& animator, double seconds, std::function<void()> changed, std::function<void()> arrived = {});
  ~Fade() override { animator_.stop(*this); }

  double value() const { return value_; }
  double goal() const { return goal_; }
  bool isMoving() const { return animator_.isRunning(*this); }
  void fadeTo(double goal);
  /// The whole way to 1 from now on, as something that runs off.
  void restart();
  /// To a value at once, without a call of `changed`.
  void jump(double value);

  bool advance(double seconds) override;
  void finish() override;

 private:
  void arrive();

  Animator& animator_;
  double seconds_;
  std::function<void()> changed_;
  std::function<void()> arrived_;
  double value_ = 0;
  double goal_ = 0;
};

}  // namespace tarnwick
