#pragma once

#include <functional>

#include "motion/Animator.h"

namespace tarnwick {

/// A strength that goes from 1 down and up again, for so many beats at most.
class Pulse final : public Animation {
 public:
  struct Beat {
    double seconds = 0;  ///< Down and up.
    double lowest = 0;
    int most = 0;  ///< Beats in one go.
  };
  Pulse(Animator& animator, const Beat& beat, std::function<void()> changed);
  ~Pulse() override { animator_.stop(*this); }

  /// 1 while it does not beat.
  double value() const;
  bool isMoving() const { return animator_.isRunning(*this); }
  /// Beats from now on. It does not begin again after the last beat until it was stopped.
  void start();
  void stop();

  bool advance(double seconds) override;
  void finish() override { passed_ = beat_.seconds * beat_.most; }

 private:
  Animator& animator_;
  Beat beat_;
  std::function<void()> changed_;
  double passed_ = 0;
};

}  // namespace tarnwick
