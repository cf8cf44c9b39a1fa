#include <algorithm>

#include "system/ports/MachineDetails.h"

namespace tarnwick {

QList<double> coreLoads(const QList<CoreTicks>& before, const QList<CoreTicks>& after) {
  if (before.size() != after.size()) return {};
  QList<double> loads;
  bool passed = false;
  for (qsizetype i = 0; i < after.size(); ++i) {
    // A core that was switched off and on again may count from the beginning.
    const bool counts = after[i].all > before[i].all && after[i].busy >= before[i].busy;
    passed = passed || counts;
    loads << (counts ? std::min(1.0, static_cast<double>(after[i].busy - before[i].busy) /
                                         static_cast<double>(after[i].all - before[i].all))
                     : 0.0);
  }
  return passed ? loads : QList<double>();
}

}  // namespace tarnwick
