#include "views/families/system/SystemRoom.h"

#include <algorithm>
#include <cmath>

#include "system/SystemMetrics.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// A curve that looks like a reading, is the same each time and ends where the reading is.
QList<double> history(double base, double swing, double phase, double last) {
  QList<double> values;
  for (int i = 0; i < SystemMetrics::depth; ++i) {
    const double at = i + phase;
    const double wave = std::sin(at * 0.31) * 0.45 + std::sin(at * 0.83) * 0.35 + std::sin(at * 0.13) * 0.45;
    values << std::max(0.0, base + swing * wave);
  }
  // The last few lead to what is shown beside the curve.
  constexpr int lead = 4;
  const double off = last - values.last();
  for (int i = 0; i < lead; ++i) values[SystemMetrics::depth - lead + i] += off * (i + 1) / lead;
  return values;
}

QList<double> curve(double base, double swing, double phase) {
  QList<double> values;
  for (int i = 0; i < SystemMetrics::depth; ++i)
    values << std::max(0.0, base + swing * (std::sin((i + phase) * 0.22) * 0.65 + std::sin((i + phase) * 0.61) * 0.35));
  return values;
}

ProcessUsage process(const QString& name, double cpu, double megabytes) {
  static qint32 pid = 4200;
  ProcessUsage usage;
  usage.reading = {++pid, 1, name, 0, static_cast<quint64>(megabytes * 1024 * 1024)};
  usage.cpu = cpu;
  return usage;
}

QList<ProcessUsage> processes() {
  return {process(u"Browser"_s, 18.2, 3170),  process(u"Editor"_s, 11, 1430), process(u"Indexer"_s, 4.1, 310),
          process(u"Player"_s, 2.3, 260),     process(u"Mail"_s, 1.2, 610),   process(u"Messages"_s, 0.8, 505),
          process(u"compositor"_s, 0.7, 190), process(u"Terminal"_s, 0.2, 84)};
}

QString processMessage() { return u"CPU uses one core as 100%. RAM is each process’s physical footprint."_s; }

/// The reading after so many of the same length.
MachineReading machineReading(quint64 readings) {
  static constexpr quint64 busy[] = {42, 16, 9, 34, 7, 22, 28, 15};
  MachineReading reading;
  for (const quint64 each : busy) reading.cores << CoreTicks{readings * each, readings * 100};
  reading.frequency = 2.4e9;
  reading.load = 1.84;
  reading.uptime = 76 * 3600;
  constexpr double giga = 1024.0 * 1024 * 1024;
  reading.memory = MemoryParts{5.9 * giga, 1.6 * giga, 2.3 * giga, 6.2 * giga, 0.2 * giga, 4 * giga};
  return reading;
}

}  // namespace

void pictureMachine(TileSources& sources) {
  constexpr double gigabyte = 1024.0 * 1024 * 1024;
  sources.metrics = MetricsSnapshot{.cpu = 23,
                                    .memory = 61,
                                    .memoryUsed = 9.8 * gigabyte,
                                    .memoryTotal = 16 * gigabyte,
                                    .battery = 82,
                                    .disk = 72,
                                    .diskFree = 140e9,
                                    .download = 2.4e6,
                                    .upload = 318e3};
  sources.cpuHistory = history(34, 24, 2, 23);
  sources.memoryHistory = history(54, 9, 7, 61);
  sources.networkHistory = history(1.8e6, 1.1e6, 3, 2.718e6);
  sources.downloadHistory = curve(1.6e6, 1.2e6, 3);
  sources.uploadHistory = curve(240e3, 160e3, 9);
  ReadingFacts& readings = sources.readings;
  readings.celsius = 54;
  readings.celsiusHistory = curve(48, 8, 22);
  readings.celsiusHistory.last() = 54;
  readings.processes = processes();
  readings.processMessage = processMessage();
}

void fillReadingsWithMachine(const PicturedParts& parts) {
  parts.readings.processes.setFixed(processes(), processMessage());
  parts.readings.machine.reading = [readings = quint64{0}]() mutable { return machineReading(++readings); };
}

}  // namespace tarnwick
