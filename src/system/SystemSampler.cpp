#include "system/SystemSampler.h"

#include <algorithm>

#include "base/ProbeCounters.h"

namespace tarnwick {
namespace {

double share(double part, double whole) { return whole > 0.0 ? part / whole * 100.0 : 0.0; }

// A counter that fell means that an adapter went away with its bytes; no rate can be computed from that.
double rate(quint64 before, quint64 after, double seconds) {
  return after > before ? static_cast<double>(after - before) / seconds : 0.0;
}

void readMemory(const std::optional<MemoryReading>& memory, MetricsSnapshot& into) {
  if (!memory) return;
  into.memoryTotal = memory->total;
  if (!memory->available) return;
  into.memoryUsed = std::clamp(memory->total - *memory->available, 0.0, std::max(0.0, memory->total));
  into.memory = share(into.memoryUsed, memory->total);
}

}  // namespace

MetricsSnapshot SystemSampler::sample(SystemCounters& counters, bool includingSlowReadings, double now) {
  MetricsSnapshot snapshot;
  snapshot.cpu = processorLoad(counters.processorTicks());
  readMemory(counters.memory(), snapshot);
  readNetwork(counters.network(), now, snapshot);
  if (includingSlowReadings) {
    ProbeCounters::count("diskCapacityRead");
    if (const auto disk = counters.disk()) lastDisk.emplace(disk->capacity - disk->available, disk->available);
    lastBattery = batteryCharge(counters);
    lastBatteryFlow = lastBattery ? counters.batteryFlow() : BatteryFlow::Unknown;
  }
  if (lastDisk) {
    snapshot.disk = share(lastDisk->first, lastDisk->first + lastDisk->second);
    snapshot.diskFree = lastDisk->second;
  }
  snapshot.battery = lastBattery;
  snapshot.batteryFlow = lastBatteryFlow;
  return snapshot;
}

std::optional<double> SystemSampler::batteryCharge(SystemCounters& counters) {
  const auto charge = counters.batteryCharge();
  if (!charge) return std::nullopt;
  return std::clamp(*charge, 0.0, 100.0);
}

double SystemSampler::processorLoad(const std::optional<ProcessorTicks>& ticks) {
  if (!ticks) return 0.0;
  const QList<quint32> current{ticks->user, ticks->system, ticks->idle, ticks->nice};
  double load = 0.0;
  if (lastCPU.size() == current.size()) {
    // Unsigned subtraction gives the right difference across a wrap.
    const auto difference = [&](qsizetype i) { return static_cast<double>(quint32(current[i] - lastCPU[i])); };
    const double idle = difference(2);
    const double total = difference(0) + difference(1) + idle + difference(3);
    load = share(total - idle, total);
  }
  lastCPU = current;
  return load;
}

void SystemSampler::readNetwork(const std::optional<NetworkReading>& bytes, double now, MetricsSnapshot& into) {
  if (!bytes) return;
  const double elapsed = now - lastTime;
  if (previousBytes && elapsed > 0.0) {
    into.download = rate(previousBytes->first, bytes->received, elapsed);
    into.upload = rate(previousBytes->second, bytes->sent, elapsed);
  }
  previousBytes.emplace(bytes->received, bytes->sent);
  lastTime = now;
}

}  // namespace tarnwick
