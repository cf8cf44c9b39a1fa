#pragma once

#include <QPointer>
#include <functional>
#include <memory>

#include "motion/Animator.h"
#include "motion/MotionStyle.h"
#include "motion/RevealSpring.h"

class QWidget;

namespace tarnwick {

/// Moves one value of one widget by a spring, frame by frame, as the reveal of a dock. The clock beats only while the
/// spring moves, so a value at rest costs nothing. Main thread only.
class SpringDriver final : public Animation {
 public:
  /// `view` shows by its visibility whether there is anything to animate. `onChange` receives each new value, last of
  /// all the target itself; it may ask for another target, but must not destroy the driver.
  SpringDriver(QWidget* view, std::unique_ptr<FrameClock> clock, std::function<void(double)> onChange);
  ~SpringDriver() override;

  /// Moves to a target. A motion under way is redirected and keeps its velocity; a request for the target at which the
  /// value already rests does nothing. Without animation, or while the view is not to be seen, the value jumps and is
  /// reported once.
  void animate(double to, MotionStyle style, bool animated, bool reduceMotion);

  const RevealSpring& spring() const { return spring_; }
  bool isMoving() const { return animator_.isRunning(*this); }

  bool advance(double seconds) override;
  void finish() override;

 private:
  Animator animator_;
  RevealSpring spring_;
  MotionParameters parameters_;
  QPointer<QWidget> view_;
  std::function<void(double)> onChange_;
};

}  // namespace tarnwick
