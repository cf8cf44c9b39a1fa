#pragma once

#include <string>

namespace tarnwick {

/// Power management of devices while they are in use.
struct DeviceSleep {
  /// Whether the device sleeps that a folder in the kernel's tree stands for, or the one behind it: a reading would wake
  /// it. This one does not.
  static bool isAsleep(const std::string& folder);
  /// The same of the device on which a folder of the user's lies, below `root`, which stands for "/".
  static bool isVolumeAsleep(const std::string& root, const std::string& folder);
};

}  // namespace tarnwick
