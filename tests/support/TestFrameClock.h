#pragma once

#include "desktop/FrameClock.h"

namespace tarnwick::test {

/// A frame clock that beats when the test says so.
class TestFrameClock final : public FrameClock {
 public:
  static constexpr double kFrame = 1.0 / 60;

  void start() override {
    if (!isRunning_) ++starts;
    isRunning_ = true;
  }
  void stop() override { isRunning_ = false; }
  bool isRunning() const override { return isRunning_; }

  /// One frame, or as many as fit into `seconds`, for as long as it runs. Returns how many there were.
  int beat(double seconds = kFrame) {
    int frames = 0;
    for (double passed = kFrame; passed <= seconds + 1e-9 && isRunning_; passed += kFrame, ++frames) {
      now_ += kFrame;
      Q_EMIT frame(now_, kFrame);
    }
    return frames;
  }

  int starts = 0;

 private:
  bool isRunning_ = false;
  double now_ = 100;
};

}  // namespace tarnwick::test
