#include "platform/qt/TimerFrameClocks.h"

#include "platform/qt/TimerFrameClock.h"

namespace tarnwick {

std::unique_ptr<FrameClock> TimerFrameClocks::make(const QString& screen) {
  return std::make_unique<TimerFrameClock>([screenOf = screenOf_, screen] { return screenOf(screen); });
}

}  // namespace tarnwick
