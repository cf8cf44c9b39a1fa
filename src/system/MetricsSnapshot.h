#pragma once

#include <optional>

namespace tarnwick {

/// What becomes of the charge of the machine's batteries.
enum class BatteryFlow {
  Unknown,
  Draining,
  Charging,
  Held,  ///< On the charger, which gives nothing: they are full, or kept where they are.
};

/// One reading of the machine, as the system tiles show it.
struct MetricsSnapshot {
  double cpu = 0.0;     ///< Percent of all processor time that was busy since the last sample.
  double memory = 0.0;  ///< Percent of physical memory in use.
  double memoryUsed = 0.0;
  double memoryTotal = 0.0;       ///< Bytes, like `memoryUsed`.
  std::optional<double> battery;  ///< Percent; none without a battery.
  BatteryFlow batteryFlow = BatteryFlow::Unknown;
  double disk = 0.0;      ///< Percent of the system volume in use.
  double diskFree = 0.0;  ///< Bytes.
  double download = 0.0;  ///< Bytes per second since the last sample, like `upload`.
  double upload = 0.0;

  bool operator==(const MetricsSnapshot&) const = default;
};

}  // namespace tarnwick
