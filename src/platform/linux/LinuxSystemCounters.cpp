#include "platform/linux/LinuxSystemCounters.h"

#include <unistd.h>

#include <QDir>
#include <algorithm>
#include <memory>

#include "platform/linux/DeviceSleep.h"
#include "platform/linux/SystemVolume.h"

namespace tarnwick {
namespace {

// The lines that matter are at the top of both files; on a large machine the rest of /proc/stat is long.
constexpr std::size_t kTopOfFile = 1024;

}  // namespace

LinuxSystemCounters::LinuxSystemCounters(const QString& root, const QString& home)
    : root_(KernelFile::folderOf(root)),
      stat_(root_ + "proc/stat"),
      meminfo_(root_ + "proc/meminfo"),
      netDev_(root_ + "proc/net/dev"),
      disk_([system = root_, user = KernelFile::folderOf(home.isEmpty() ? QDir::homePath() : home),
             known = std::make_shared<std::optional<DiskReading>>()] {
        // A disk that sleeps is not woken for a figure that hardly changes.
        if (*known && DeviceSleep::isVolumeAsleep(system, system)) return *known;
        const auto volume = SystemVolume::at(system);
        // The home folder may be on a server; it is asked only where its answer matters.
        const bool needsHome = !volume || volume->isReadOnlyImage();
        *known = SystemVolume::chosen(volume, needsHome ? SystemVolume::at(user) : std::nullopt);
        return *known;
      }),
      battery_([folder = root_ + "sys/class/power_supply", known = std::make_shared<PowerSupplies::Known>()] {
        return PowerSupplies::read(folder, *known);
      }) {}

std::optional<ProcessorTicks> LinuxSystemCounters::processorTicks() {
  const auto text = stat_.read(kTopOfFile);
  const auto current = text ? ProcText::processorTicks(*text) : std::nullopt;
  if (!current) return std::nullopt;
  if (previousTicks_) {
    // The kernel's idle and waiting times can step back a little. Handed on in 32 bits such a step would look like a
    // wrap, a whole epoch of idleness, so only what grew is added.
    for (std::size_t i = 0; i < ticks_.size(); ++i) {
      if ((*current)[i] > (*previousTicks_)[i]) ticks_[i] += (*current)[i] - (*previousTicks_)[i];
    }
  } else {
    ticks_ = *current;
  }
  previousTicks_ = current;
  return ProcessorTicks{.user = static_cast<quint32>(ticks_[0]),
                        .system = static_cast<quint32>(ticks_[1]),
                        .idle = static_cast<quint32>(ticks_[2]),
                        .nice = static_cast<quint32>(ticks_[3])};
}

std::optional<MemoryReading> LinuxSystemCounters::memory() {
  const auto text = meminfo_.read(kTopOfFile);
  return text ? ProcText::memory(*text) : std::nullopt;
}

std::optional<NetworkReading> LinuxSystemCounters::network() {
  const auto text = netDev_.read();
  if (!text) return std::nullopt;
  const auto interfaces = ProcText::interfaces(*text);
  findDevices(interfaces);
  return ProcText::traffic(interfaces, interfaceHasDevice_);
}

std::optional<double> LinuxSystemCounters::batteryCharge() {
  const auto reading = battery_.value();
  batteryFlow_ = reading ? reading->flow : BatteryFlow::Unknown;
  return reading ? std::optional(reading->charge) : std::nullopt;
}

// What is behind an interface doesn't change while it keeps its name, so the folders are looked at only when one comes,
// goes or is renamed.
void LinuxSystemCounters::findDevices(const std::vector<ProcText::Interface>& interfaces) {
  const auto same = [](const ProcText::Interface& interface, const std::string& name) {
    return interface.name == name;
  };
  if (std::equal(interfaces.begin(), interfaces.end(), interfaceNames_.begin(), interfaceNames_.end(), same)) return;
  interfaceNames_.clear();
  interfaceHasDevice_.clear();
  for (const auto& interface : interfaces) {
    const auto& name = interfaceNames_.emplace_back(interface.name);
    interfaceHasDevice_.push_back(::access((root_ + "sys/class/net/" + name + "/device").c_str(), F_OK) == 0);
  }
}

}  // namespace tarnwick
