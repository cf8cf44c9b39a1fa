#pragma once

#include <QString>
#include <string>
#include <vector>

#include "platform/linux/KernelFile.h"
#include "platform/linux/PowerSupplies.h"
#include "platform/linux/ProcText.h"
#include "platform/linux/SlowReading.h"
#include "system/ports/SystemCounters.h"

namespace tarnwick {

/// The counters that the Linux kernel keeps under /proc and /sys.
class LinuxSystemCounters final : public SystemCounters {
 public:
  /// `root` stands in for "/", so that a captured tree can be read. `home` is the folder whose volume the disk reading
  /// falls back to; empty means the user's.
  explicit LinuxSystemCounters(const QString& root = QStringLiteral("/"), const QString& home = {});

  std::optional<ProcessorTicks> processorTicks() override;
  std::optional<MemoryReading> memory() override;
  std::optional<NetworkReading> network() override;
  std::optional<DiskReading> disk() override { return disk_.value(); }
  std::optional<double> batteryCharge() override;
  BatteryFlow batteryFlow() override { return batteryFlow_; }
  bool awaitsSlowReading() const override { return disk_.isAwaited() || battery_.isAwaited(); }

 private:
  void findDevices(const std::vector<ProcText::Interface>& interfaces);

  std::string root_;
  KernelFile stat_;
  KernelFile meminfo_;
  KernelFile netDev_;
  SlowReading<DiskReading> disk_;
  SlowReading<PowerSupplies::Reading> battery_;
  BatteryFlow batteryFlow_ = BatteryFlow::Unknown;
  std::optional<ProcText::Ticks> previousTicks_;
  ProcText::Ticks ticks_{};
  std::vector<std::string> interfaceNames_;
  std::vector<bool> interfaceHasDevice_;
};

}  // namespace tarnwick
