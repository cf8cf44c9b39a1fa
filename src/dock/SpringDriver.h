#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

#include "dock/rules/MotionStyle.h"
#include "dock/rules/RevealSpring.h"

class QWidget;

namespace tarnwick {

class FrameClock;

/// Moves one value of one widget by a spring, frame by frame. The clock beats only while the spring moves, so a value
/// at rest costs nothing. Main thread only.
class SpringDriver final : public QObject {
  Q_OBJECT
 public:
  /// `view` tells by its visibility whether there is anything to animate. `onChange` receives each new value, last of
  /// all the target itself; it may ask for another target, but must not destroy the driver.
  SpringDriver(QWidget* view, std::unique_ptr<FrameClock> clock, std::function<void(double)> onChange);
  ~SpringDriver() override;

  /// Moves to a target. A motion under way is redirected and keeps its velocity; a request for the target at which the
  /// value already rests does nothing. Without animation, or while the view is not to be seen, the value jumps and is
  /// reported once.
  void animate(double to, MotionStyle style, bool animated, bool reduceMotion);

  const RevealSpring& spring() const { return spring_; }
  bool isMoving() const;

 private:
  void frame(double timestamp, double duration);
  void stop();

  RevealSpring spring_;
  MotionParameters parameters_;
  std::unique_ptr<FrameClock> clock_;
  double lastTimestamp_ = 0;  // 0 before the first frame.
  QPointer<QWidget> view_;
  std::function<void(double)> onChange_;
};

}  // namespace tarnwick
