#pragma once

#include "desktop/FrameClock.h"
#include "platform/wayland/WaylandScreens.h"

namespace tarnwick {

/// Clocks that beat at the rate of their display. The compositor tells of a frame only to a window that has just
/// changed; a kernel timer keeps the beat, and Qt paints in step with the display. The screens must outlive it and
/// every clock.
class WaylandFrameClocks final : public FrameClocks {
 public:
  explicit WaylandFrameClocks(const WaylandScreens& screens) : screens_(screens) {}

  std::unique_ptr<FrameClock> make(const QString& screen) override;

 private:
  const WaylandScreens& screens_;
};

}  // namespace tarnwick
