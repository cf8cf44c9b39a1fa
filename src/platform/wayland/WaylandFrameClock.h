#pragma once

#include <QTimer>
#include <chrono>

#include "desktop/FrameClock.h"
#include "platform/wayland/WaylandScreens.h"

namespace tarnwick {

/// Beats that lie a whole number of periods after the start; those that the main thread slept through are left out.
class WaylandFrameClock final : public FrameClock {
  Q_OBJECT
 public:
  WaylandFrameClock(const WaylandScreens& screens, const QString& screen);

  void start() override;
  void stop() override { timer_.stop(); }
  bool isRunning() const override { return timer_.isActive(); }

 private:
  using Clock = std::chrono::steady_clock;

  void wait();
  void beat();

  const WaylandScreens& screens_;
  QString screen_;
  QTimer timer_;
  Clock::duration period_{};
  Clock::time_point next_;
};

}  // namespace tarnwick
