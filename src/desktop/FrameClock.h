#pragma once

#include <QObject>
#include <QString>
#include <memory>

namespace tarnwick {

/// Signals each frame of a display while something moves. It costs nothing while it is stopped. Main thread only.
class FrameClock : public QObject {
  Q_OBJECT
 public:
  /// Frames come from now on; a second call does nothing.
  virtual void start() = 0;
  virtual void stop() = 0;
  virtual bool isRunning() const = 0;

 Q_SIGNALS:
  /// `timestamp`: seconds on a clock that never jumps, of the frame that is about to be shown. `duration`: seconds
  /// until the next one.
  void frame(double timestamp, double duration);
};

/// Makes frame clocks. Each belongs to the caller.
class FrameClocks {
 public:
  virtual ~FrameClocks() = default;
  /// A clock at the frame rate of the display of that identity. Never null, also for a display that is gone.
  virtual std::unique_ptr<FrameClock> make(const QString& screen) = 0;
};

}  // namespace tarnwick
