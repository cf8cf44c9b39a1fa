#pragma once

#include <QList>
#include <QObject>
#include <memory>

#include "base/Scheduler.h"
#include "facilities/BeatClient.h"
#include "system/MetricsSnapshot.h"
#include "system/SystemSampler.h"
#include "system/ports/SystemCounters.h"

namespace tarnwick {

/// What the CPU, memory, disk, battery and network tiles show. Sampled on the beat while `isNeeded`; there is no timer
/// here. Owns the counters. Main thread only.
class SystemMetrics final : public QObject, public BeatClient {
  Q_OBJECT
 public:
  /// Entries that each history keeps, oldest first.
  static constexpr int depth = 40;
  /// Samples between two slow ones (disk, battery).
  static constexpr int slowRefreshInterval = 15;

  /// `clock` must outlive this object.
  SystemMetrics(std::unique_ptr<SystemCounters> counters, const Scheduler& clock, QObject* parent = nullptr);
  ~SystemMetrics() override;

  const MetricsSnapshot& snapshot() const { return snapshot_; }
  const QList<double>& cpuHistory() const { return cpuHistory_; }          ///< percent
  const QList<double>& ramHistory() const { return ramHistory_; }          ///< percent
  const QList<double>& networkHistory() const { return networkHistory_; }  ///< bytes per second, both ways together
  const QList<double>& downloadHistory() const { return downloadHistory_; }  ///< the same, one way each
  const QList<double>& uploadHistory() const { return uploadHistory_; }
  /// Whether the histories still begin with the first sample. Load and traffic follow from two looks at the counters, so
  /// theirs begin with a 0 that nobody measured then.
  bool holdsFirstSample() const { return holdsFirstSample_; }

  /// Whether something shows these readings, so that sampling is worth its cost. The beat samples only then.
  bool isNeeded() const { return isNeeded_; }
  /// Whether it is needed from now on, by what displays show.
  void follow(const ActiveSets& active);

  BeatStep step() const override { return BeatStep::Metrics; }
  int everyTicks() const override { return 2; }
  bool isNeededBy(const ActiveSets&) const override { return isNeeded_; }
  void beat(const ActiveSets&) override { sample(); }

  int samplesUntilSlowRefresh() const { return samplesUntilSlowRefresh_; }

  /// Takes one snapshot, appends to the histories and announces both at once. The first one, and then every sixteenth,
  /// includes the slow readings; so do those that come before there was a first answer to them.
  void sample();

 Q_SIGNALS:
  void changed();

 private:
  std::unique_ptr<SystemCounters> counters_;
  const Scheduler& clock_;
  SystemSampler sampler_;
  MetricsSnapshot snapshot_;
  QList<double> cpuHistory_;
  QList<double> ramHistory_;
  QList<double> networkHistory_;
  QList<double> downloadHistory_;
  QList<double> uploadHistory_;
  bool holdsFirstSample_ = true;
  int samplesUntilSlowRefresh_ = 0;
  bool isNeeded_ = false;
};

}  // namespace tarnwick
