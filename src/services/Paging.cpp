#include "services/Paging.h"

#include "base/Cancelled.h"

namespace tarnwick {

bool Paging::next(const std::stop_token& stop) {
  throwIfStopped(stop);
  if (isFinished_ || page_ >= limits_.pages) return false;
  ++page_;
  return true;
}

}  // namespace tarnwick
