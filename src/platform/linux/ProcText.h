#pragma once

#include <QtGlobal>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "system/ports/MachineDetails.h"
#include "system/ports/SystemCounters.h"

namespace tarnwick {

/// What the kernel's text files say, as values. Text in, values out; views point into the text.
struct ProcText {
  /// user, system, idle, nice in ticks, 64 bits wide. Waiting for a disk is idle; interrupts and stolen time are
  /// system; guests are already counted in user and nice.
  using Ticks = std::array<quint64, 4>;
  static std::optional<Ticks> processorTicks(std::string_view stat);

  /// Each core that is switched on, in the kernel's order.
  static QList<CoreTicks> cores(std::string_view stat);

  static std::optional<MemoryReading> memory(std::string_view meminfo);
  static std::optional<MemoryParts> memoryParts(std::string_view meminfo);

  struct Interface {
    std::string_view name;
    quint64 received = 0;
    quint64 sent = 0;
  };
  static std::vector<Interface> interfaces(std::string_view netDev);

  /// The sum over the interfaces that count: those with a device behind them, so that traffic through a tunnel, a
  /// bridge or a container is not counted twice; where none has a device (inside a container), all but loopback.
  static NetworkReading traffic(const std::vector<Interface>& interfaces, const std::vector<bool>& hasDevice);
};

}  // namespace tarnwick
