#pragma once

#include <QtGlobal>
#include <optional>

#include "system/MetricsSnapshot.h"

namespace tarnwick {

/// What the processors did since the machine started, in ticks, all of them together. Each counter wraps at 32 bits;
/// only differences mean anything.
struct ProcessorTicks {
  quint32 user = 0;
  quint32 system = 0;  ///< With interrupts and the time that a host took away: busy all the same.
  quint32 idle = 0;    ///< With the time spent waiting for a disk.
  quint32 nice = 0;
};

/// Physical memory in bytes.
struct MemoryReading {
  double total = 0.0;
  std::optional<double> available;  ///< What programs could still get; none when it can't be read.
};

/// The volume that the user thinks of as the system's, in bytes.
struct DiskReading {
  double capacity = 0.0;
  double available = 0.0;  ///< To an ordinary user.
};

/// Bytes through all network adapters since the machine started (or since an adapter came).
struct NetworkReading {
  quint64 received = 0;
  quint64 sent = 0;
};

/// The raw counters of the machine. Every reading is none when this machine has no such thing or refuses to report it.
/// Called on the main thread at the heartbeat: an adapter answers within a fraction of a millisecond and never blocks.
class SystemCounters {
 public:
  virtual ~SystemCounters() = default;
  virtual std::optional<ProcessorTicks> processorTicks() = 0;
  virtual std::optional<MemoryReading> memory() = 0;
  virtual std::optional<NetworkReading> network() = 0;
  /// May be as old as the last time it was asked.
  virtual std::optional<DiskReading> disk() = 0;
  /// Percent, all batteries of the machine as one. May be as old as the last time it was asked.
  virtual std::optional<double> batteryCharge() = 0;
  /// As old as the charge that was reported last.
  virtual BatteryFlow batteryFlow() { return BatteryFlow::Unknown; }
  /// Whether the disk or the battery was asked for and has never answered yet, so that asking again soon is worth it.
  virtual bool awaitsSlowReading() const { return false; }
};

}  // namespace tarnwick
