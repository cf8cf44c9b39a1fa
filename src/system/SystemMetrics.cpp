#include "system/SystemMetrics.h"

#include "widgets/catalog/Family.h"

namespace tarnwick {

namespace {

void append(QList<double>& history, double value) {
  if (history.size() >= SystemMetrics::depth) history.removeFirst();
  history.append(value);
}

}  // namespace

SystemMetrics::SystemMetrics(std::unique_ptr<SystemCounters> counters, const Scheduler& clock, QObject* parent)
    : QObject(parent), counters_(std::move(counters)), clock_(clock) {}

SystemMetrics::~SystemMetrics() = default;

void SystemMetrics::follow(const ActiveSets& active) {
  isNeeded_ = active.families.contains(familyText(Family::Metric));
}

void SystemMetrics::sample() {
  const bool due = samplesUntilSlowRefresh_ < 1;
  samplesUntilSlowRefresh_ = due ? slowRefreshInterval : samplesUntilSlowRefresh_ - 1;
  snapshot_ = sampler_.sample(*counters_, due || counters_->awaitsSlowReading(), clock_.reference());
  if (cpuHistory_.size() >= depth) holdsFirstSample_ = false;
  append(cpuHistory_, snapshot_.cpu);
  append(ramHistory_, snapshot_.memory);
  append(networkHistory_, snapshot_.download + snapshot_.upload);
  append(downloadHistory_, snapshot_.download);
  append(uploadHistory_, snapshot_.upload);
  Q_EMIT changed();
}

}  // namespace tarnwick
