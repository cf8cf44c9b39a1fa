#pragma once

#include <QList>
#include <QtGlobal>
#include <optional>
#include <utility>

#include "system/MetricsSnapshot.h"
#include "system/ports/SystemCounters.h"

namespace tarnwick {

/// Turns counters into rates: keeps the previous ones, so that each reading speaks of the time since the last. A value,
/// so a test steps it manually.
struct SystemSampler {
  QList<quint32> lastCPU;  ///< user, system, idle, nice; empty before the first sample.
  std::optional<std::pair<quint64, quint64>> previousBytes;  ///< received, sent
  double lastTime = 0.0;  ///< When `previousBytes` was read, in seconds on a clock that never jumps.
  std::optional<std::pair<double, double>> lastDisk;  ///< used, free
  std::optional<double> lastBattery;
  BatteryFlow lastBatteryFlow = BatteryFlow::Unknown;

  /// `now` is in seconds on a clock that never jumps, so that setting the wall clock makes no burst of traffic.
  /// Without slow readings, disk and battery are those of the last slow sample.
  MetricsSnapshot sample(SystemCounters& counters, bool includingSlowReadings, double now);

  /// Percent within 0 to 100; none without a battery.
  static std::optional<double> batteryCharge(SystemCounters& counters);

 private:
  double processorLoad(const std::optional<ProcessorTicks>& ticks);
  void readNetwork(const std::optional<NetworkReading>& bytes, double now, MetricsSnapshot& into);
};

}  // namespace tarnwick
