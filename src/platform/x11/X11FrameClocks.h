#pragma once

#include "desktop/FrameClock.h"
#include "platform/x11/X11Screens.h"

namespace tarnwick {

/// Clocks that beat at the rate of their display. X11 does not tell when a display shows a frame; a kernel timer keeps
/// the beat, with the moment of the start as its phase. The screens must outlive it and every clock.
class X11FrameClocks final : public FrameClocks {
 public:
  explicit X11FrameClocks(const X11Screens& screens) : screens_(screens) {}

  std::unique_ptr<FrameClock> make(const QString& screen) override;

 private:
  const X11Screens& screens_;
};

}  // namespace tarnwick
