#include "apps/RunningAppOrder.h"

#include <algorithm>

namespace tarnwick {

QList<quint64> RunningAppOrder::ordered(const QList<quint64>& identities) {
  QMap<quint64, int> kept;
  for (const quint64 identity : identities) {
    if (kept.contains(identity)) continue;
    const auto known = firstSeen.constFind(identity);
    kept.insert(identity, known == firstSeen.constEnd() ? ++arrivals : *known);
  }
  firstSeen = kept;
  QList<quint64> result = kept.keys();
  std::sort(result.begin(), result.end(), [&](quint64 left, quint64 right) { return kept[left] < kept[right]; });
  return result;
}

}  // namespace tarnwick
