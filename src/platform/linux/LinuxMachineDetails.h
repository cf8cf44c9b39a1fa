#pragma once

#include <QString>
#include <string>
#include <vector>

#include "platform/linux/KernelFile.h"
#include "system/ports/MachineDetails.h"

namespace tarnwick {

/// What the Linux kernel reports of the machine under /proc and /sys. Opens nothing before it is read.
class LinuxMachineDetails final : public MachineDetails {
 public:
  /// `root` stands in for "/", so that a captured tree can be read.
  explicit LinuxMachineDetails(const QString& root = QStringLiteral("/"));

  MachineReading read() override;

 private:
  std::optional<double> frequency();

  KernelFile stat_;
  KernelFile meminfo_;
  KernelFile loadavg_;
  KernelFile uptime_;
  std::string policies_;
};

}  // namespace tarnwick
