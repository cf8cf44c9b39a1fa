#include "config/SaveSchedule.h"

#include <algorithm>

namespace tarnwick {

double SaveSchedule::delay(bool layoutChanged, std::optional<double> sinceLastSave, std::optional<double> pendingIn) {
  double wait = kShortestDelay;
  if (!layoutChanged && sinceLastSave) {
    wait = std::clamp(kMinimumContentSaveInterval - *sinceLastSave, kShortestDelay, kMinimumContentSaveInterval);
  }
  return pendingIn ? std::min(wait, std::max(*pendingIn, 0.0)) : wait;
}

}  // namespace tarnwick
