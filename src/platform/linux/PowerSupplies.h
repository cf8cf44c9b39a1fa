#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "system/ports/SystemCounters.h"

namespace tarnwick {

/// One battery that feeds the machine, with whatever its driver reports.
struct Battery {
  std::optional<double> energyNow;  ///< microwatt-hours, like `energyFull`
  std::optional<double> energyFull;
  std::optional<double> chargeNow;  ///< microampere-hours, like `chargeFull`
  std::optional<double> chargeFull;
  std::optional<double> capacity;  ///< percent, from drivers that know no more
  BatteryFlow flow = BatteryFlow::Unknown;

  /// From the `uevent` text of a power supply. None for mains, for an empty bay, and for the battery of a mouse or
  /// headset.
  static std::optional<Battery> fromUevent(std::string_view text);
};

struct PowerSupplies {
  /// Percent of all batteries together: energies are added where all report them, otherwise charges, otherwise the mean
  /// of the percentages. None without a battery that reports anything.
  static std::optional<double> charge(const std::vector<Battery>& batteries);

  /// One battery that is charged or drained speaks for all.
  static BatteryFlow flow(const std::vector<Battery>& batteries);

  struct Reading {
    double charge = 0;  ///< Percent.
    BatteryFlow flow = BatteryFlow::Unknown;
  };
  /// Batteries by their folders, as they were when they were last read.
  using Known = std::map<std::string, Battery>;
  /// What the folder of power supplies reports now. May stall in the firmware of some laptops. One that sleeps is not
  /// asked: it is kept as in `known`, which takes in what the others report.
  static std::optional<Reading> read(const std::string& folder, Known& known);
  static std::optional<Reading> read(const std::string& folder) {
    Known none;
    return read(folder, none);
  }
};

}  // namespace tarnwick
