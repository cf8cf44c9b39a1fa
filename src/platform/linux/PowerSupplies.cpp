#include "platform/linux/PowerSupplies.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <system_error>

#include "platform/linux/DeviceSleep.h"
#include "platform/linux/KernelFile.h"

namespace tarnwick {
namespace {

std::string_view valueOf(std::string_view text, std::string_view key) {
  constexpr std::string_view kPrefix = "POWER_SUPPLY_";
  while (!text.empty()) {
    const auto end = std::min(text.find('\n'), text.size());
    auto line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (!line.starts_with(kPrefix)) continue;
    line.remove_prefix(kPrefix.size());
    if (line.starts_with(key) && line.substr(key.size()).starts_with('=')) return line.substr(key.size() + 1);
  }
  return {};
}

std::optional<double> numberOf(std::string_view text, std::string_view key) {
  const auto word = valueOf(text, key);
  long long value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (word.empty() || error != std::errc()) return std::nullopt;
  return static_cast<double>(value);
}

std::optional<double> fullOf(std::string_view text, std::string_view key, std::string_view designKey) {
  const auto full = numberOf(text, key);
  if (full && *full > 0.0) return full;
  const auto design = numberOf(text, designKey);
  return design && *design > 0.0 ? design : std::nullopt;
}

BatteryFlow flowOf(std::string_view status) {
  if (status == "Charging") return BatteryFlow::Charging;
  if (status == "Discharging") return BatteryFlow::Draining;
  return status == "Full" || status == "Not charging" ? BatteryFlow::Held : BatteryFlow::Unknown;
}

using Field = std::optional<double> Battery::*;

std::optional<double> together(const std::vector<Battery>& batteries, Field now, Field full) {
  double sumNow = 0.0;
  double sumFull = 0.0;
  for (const auto& battery : batteries) {
    if (!(battery.*now) || !(battery.*full)) return std::nullopt;
    sumNow += *(battery.*now);
    sumFull += *(battery.*full);
  }
  if (sumFull <= 0.0) return std::nullopt;
  return sumNow / sumFull * 100.0;
}

std::optional<double> chargeOfOne(const Battery& battery) {
  if (const auto energy = together({battery}, &Battery::energyNow, &Battery::energyFull)) return energy;
  if (const auto charge = together({battery}, &Battery::chargeNow, &Battery::chargeFull)) return charge;
  return battery.capacity;
}

}  // namespace

std::optional<Battery> Battery::fromUevent(std::string_view text) {
  if (valueOf(text, "TYPE") != "Battery" || valueOf(text, "SCOPE") == "Device") return std::nullopt;
  if (numberOf(text, "PRESENT") == 0.0) return std::nullopt;
  Battery battery{.energyNow = numberOf(text, "ENERGY_NOW"),
                  .energyFull = fullOf(text, "ENERGY_FULL", "ENERGY_FULL_DESIGN"),
                  .chargeNow = numberOf(text, "CHARGE_NOW"),
                  .chargeFull = fullOf(text, "CHARGE_FULL", "CHARGE_FULL_DESIGN"),
                  .capacity = numberOf(text, "CAPACITY"),
                  .flow = flowOf(valueOf(text, "STATUS"))};
  // Drivers that count charge report a voltage too, with which batteries of different kinds can be added.
  auto volts = numberOf(text, "VOLTAGE_MIN_DESIGN");
  if (!volts || *volts <= 0.0) volts = numberOf(text, "VOLTAGE_NOW");
  if (volts && *volts > 0.0 && !(battery.energyNow && battery.energyFull) && battery.chargeNow && battery.chargeFull) {
    battery.energyNow = *battery.chargeNow * *volts / 1e6;
    battery.energyFull = *battery.chargeFull * *volts / 1e6;
  }
  return battery;
}

std::optional<double> PowerSupplies::charge(const std::vector<Battery>& batteries) {
  if (batteries.empty()) return std::nullopt;
  if (const auto energy = together(batteries, &Battery::energyNow, &Battery::energyFull)) return energy;
  if (const auto charge = together(batteries, &Battery::chargeNow, &Battery::chargeFull)) return charge;
  double sum = 0.0;
  int count = 0;
  for (const auto& battery : batteries) {
    const auto one = chargeOfOne(battery);
    if (!one) continue;
    sum += *one;
    ++count;
  }
  return count > 0 ? std::optional(sum / count) : std::nullopt;
}

BatteryFlow PowerSupplies::flow(const std::vector<Battery>& batteries) {
  for (const auto flow : {BatteryFlow::Charging, BatteryFlow::Draining, BatteryFlow::Held})
    if (std::ranges::any_of(batteries, [flow](const Battery& battery) { return battery.flow == flow; })) return flow;
  return BatteryFlow::Unknown;
}

std::optional<PowerSupplies::Reading> PowerSupplies::read(const std::string& folder, Known& known) {
  std::vector<Battery> batteries;
  std::error_code failure;
  for (std::filesystem::directory_iterator entry(folder, failure), end; !failure && entry != end;
       entry.increment(failure)) {
    const std::string supply = entry->path().string();
    if (DeviceSleep::isAsleep(supply)) {
      if (const auto before = known.find(supply); before != known.end()) batteries.push_back(before->second);
      continue;
    }
    known.erase(supply);
    KernelFile uevent(supply + "/uevent");
    const auto text = uevent.read();
    if (!text) continue;
    const auto battery = Battery::fromUevent(*text);
    if (!battery) continue;
    batteries.push_back(*battery);
    known.emplace(supply, *battery);
  }
  const auto now = charge(batteries);
  return now ? std::optional(Reading{*now, flow(batteries)}) : std::nullopt;
}

}  // namespace tarnwick
