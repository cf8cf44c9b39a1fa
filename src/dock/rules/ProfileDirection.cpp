#include "dock/rules/ProfileDirection.h"

namespace tarnwick {

bool ProfileDirection::isForward(qsizetype from, qsizetype to, qsizetype count) {
  if (count < 2 || from == to) return true;
  const qsizetype forward = (to - from + count) % count;
  const qsizetype backward = (from - to + count) % count;
  return forward == backward ? from < to : forward < backward;
}

}  // namespace tarnwick
