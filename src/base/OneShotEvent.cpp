#include "base/OneShotEvent.h"

#include "base/OrderedWork.h"

namespace tarnwick {

OneShotEvent OneShotEvent::ofWork(std::function<void()> work) {
  // Never destroyed: that would wait for work that may be stuck for good.
  static OrderedWork* const queue = new OrderedWork;
  const OneShotEvent done;
  const auto kept = std::make_shared<std::function<void()>>(std::move(work));
  queue->start(
      [kept] {
        (*kept)();
        return kept;
      },
      [done](auto) { done.happen(); });
  return done;
}

}  // namespace tarnwick
