#pragma once

#include <functional>

#include "desktop/FrameClock.h"

class QScreen;

namespace tarnwick {

/// Clocks that beat at the rate of their display. X11 does not report when a display shows a frame, and a Wayland
/// compositor reports it only to a window that has just changed; a kernel timer keeps the beat, with the moment of the
/// start as its phase. What `screenOf` needs must outlive this and every clock.
class TimerFrameClocks final : public FrameClocks {
 public:
  /// The display of an identity; null for one that is not connected.
  using ScreenOf = std::function<QScreen*(const QString& id)>;

  explicit TimerFrameClocks(ScreenOf screenOf) : screenOf_(std::move(screenOf)) {}

  std::unique_ptr<FrameClock> make(const QString& screen) override;

 private:
  ScreenOf screenOf_;
};

}  // namespace tarnwick
