#include "system/ProcessUsage.h"

#include <algorithm>

namespace tarnwick {

QList<ProcessUsage> ProcessRanking::top(const QList<ProcessUsage>& rows, ProcessOrder order, int count) {
  const auto before = [order](const ProcessUsage& a, const ProcessUsage& b) {
    const double cpuA = a.cpu.value_or(-1.0);
    const double cpuB = b.cpu.value_or(-1.0);
    const quint64 ramA = a.reading.memory;
    const quint64 ramB = b.reading.memory;
    const bool cpuDiffers = cpuA < cpuB || cpuB < cpuA;
    if (cpuDiffers && (order == ProcessOrder::CPU || ramA == ramB)) return cpuA > cpuB;
    if (ramA != ramB) return ramA > ramB;
    return a.reading.pid < b.reading.pid;
  };
  QList<ProcessUsage> found(std::clamp<qsizetype>(count, 0, rows.size()));
  std::partial_sort_copy(rows.begin(), rows.end(), found.begin(), found.end(), before);
  return found;
}

QString ProcessRanking::cpuText(std::optional<double> cpu) {
  return cpu ? QString::asprintf("%.1f%%", *cpu) : QStringLiteral("—");
}

}  // namespace tarnwick
