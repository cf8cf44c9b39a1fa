#include "system/ProcessMonitor.h"

#include <cmath>

#include "widgets/catalog/Family.h"

namespace tarnwick {

ProcessMonitor::ProcessMonitor(std::unique_ptr<ProcessSource> source, const Scheduler& clock, QObject* parent)
    : QObject(parent), source_(std::move(source)), clock_(clock), message_(tr("Sampling processes…")) {}

bool ProcessMonitor::isNeededBy(const ActiveSets& active) const {
  return active.families.contains(familyText(Family::Processes));
}

void ProcessMonitor::refresh() {
  if (loading_ || isFixed_) return;
  loading_ = true;
  sampling_.start([this] { return read(); }, [this](const auto& readings) { take(readings); });
}

void ProcessMonitor::setFixed(const QList<ProcessUsage>& rows, const QString& message) {
  isFixed_ = true;
  rows_ = rows;
  message_ = message;
}

void ProcessMonitor::take(const QList<ProcessReading>& readings) {
  const double now = clock_.reference();
  const double elapsed = time_ ? now - *time_ : 0.0;
  QList<ProcessUsage> rows;
  QHash<qint32, ProcessReading> current;
  rows.reserve(readings.size());
  current.reserve(readings.size());
  for (const ProcessReading& reading : readings) {
    rows.append({reading, usage(reading, elapsed)});
    current.insert(reading.pid, reading);
  }
  rows_ = std::move(rows);
  previous_ = std::move(current);
  time_ = now;
  loading_ = false;
  message_ = readings.isEmpty() ? tr("Process metrics are unavailable on this Mac.")
                                : tr("CPU uses one core as 100%. RAM is each process’s physical footprint.");
  Q_EMIT changed();
}

std::optional<double> ProcessMonitor::usage(const ProcessReading& reading, double elapsed) const {
  if (!std::isfinite(elapsed) || elapsed <= 0.0) return std::nullopt;
  const auto before = previous_.constFind(reading.pid);
  if (before == previous_.constEnd() || before->start != reading.start) return std::nullopt;
  if (reading.cpuNanoseconds < before->cpuNanoseconds) return std::nullopt;
  constexpr double kNanosecondsInSecond = 1e9;
  constexpr double kPercent = 100.0;
  return static_cast<double>(reading.cpuNanoseconds - before->cpuNanoseconds) / kNanosecondsInSecond / elapsed *
         kPercent;
}

}  // namespace tarnwick
