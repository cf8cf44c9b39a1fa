#include "platform/x11/X11FrameClocks.h"

#include "platform/x11/X11FrameClock.h"

namespace tarnwick {

std::unique_ptr<FrameClock> X11FrameClocks::make(const QString& screen) {
  return std::make_unique<X11FrameClock>(screens_, screen);
}

}  // namespace tarnwick
