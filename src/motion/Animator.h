#pragma once

#include <QList>
#include <QObject>
#include <memory>

#include "desktop/FrameClock.h"

namespace tarnwick {

/// Something that changes from frame to frame until it has arrived: a spring, a fade, a pulse.
class Animation {
 public:
  virtual ~Animation() = default;
  /// Goes on by so many seconds, the time since the frame before. False once it has arrived: there are no more frames
  /// for it then, until it is run again.
  virtual bool advance(double seconds) = 0;
  /// Arrives at once, where there are no frames.
  virtual void finish() = 0;
};

/// Runs the animations of one widget on one frame clock, which beats only while one of them is on its way. Without a
/// clock, or with one that cannot start, they arrive at once. An animation is borrowed: it must be stopped before it is
/// destroyed, unless the animator goes first. Main thread only.
class Animator final : public QObject {
  Q_OBJECT
 public:
  explicit Animator(std::unique_ptr<FrameClock> clock = nullptr);
  ~Animator() override;

  /// Ends what runs.
  void setClock(std::unique_ptr<FrameClock> clock);
  bool hasClock() const { return clock_ != nullptr; }

  /// Does nothing for one that runs.
  void run(Animation& animation);
  void stop(Animation& animation);
  bool isRunning() const { return !running_.isEmpty(); }
  bool isRunning(const Animation& animation) const;

 private:
  void frame(double timestamp, double duration);

  std::unique_ptr<FrameClock> clock_;
  QList<Animation*> running_;
  double lastTimestamp_ = 0;  ///< 0 before the first frame.
};

}  // namespace tarnwick
