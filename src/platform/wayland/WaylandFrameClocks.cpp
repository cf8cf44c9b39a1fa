#include "platform/wayland/WaylandFrameClocks.h"

#include "platform/wayland/WaylandFrameClock.h"

namespace tarnwick {

std::unique_ptr<FrameClock> WaylandFrameClocks::make(const QString& screen) {
  return std::make_unique<WaylandFrameClock>(screens_, screen);
}

}  // namespace tarnwick
