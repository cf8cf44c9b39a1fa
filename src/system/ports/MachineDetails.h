#pragma once

#include <QList>
#include <QtGlobal>
#include <optional>

namespace tarnwick {

/// What one core did since the machine started, in ticks. Only differences mean anything.
struct CoreTicks {
  quint64 busy = 0;
  quint64 all = 0;

  bool operator==(const CoreTicks&) const = default;
};

/// What the physical memory is used for, in bytes. The four parts make up the whole.
struct MemoryParts {
  double applications = 0;
  double system = 0;  ///< The kernel's own.
  double cache = 0;   ///< Given back when a program needs it.
  double free = 0;
  double swapUsed = 0;
  double swapTotal = 0;

  double whole() const { return applications + system + cache + free; }
  bool operator==(const MemoryParts&) const = default;
};

/// What is absent is not reported by this machine.
struct MachineReading {
  QList<CoreTicks> cores;           ///< In the machine's order; empty where it does not report them.
  std::optional<double> frequency;  ///< Hertz, of the fastest core now.
  std::optional<double> load;       ///< Processes that want to run, the mean of a minute.
  std::optional<double> uptime;     ///< Seconds.
  std::optional<MemoryParts> memory;

  bool operator==(const MachineReading&) const = default;
};

/// More about the machine than tiles show: what panels read while they are open. Called on the main thread; answers
/// within a fraction of a millisecond.
class MachineDetails {
 public:
  virtual ~MachineDetails() = default;
  virtual MachineReading read() = 0;
};

/// How busy each core was between two readings, 0 to 1. Empty where that cannot be computed: no time passed for any
/// core, or their number changed.
QList<double> coreLoads(const QList<CoreTicks>& before, const QList<CoreTicks>& after);

}  // namespace tarnwick
