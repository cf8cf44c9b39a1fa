#include "platform/linux/SensorTemperatures.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDir>
#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <vector>

#include "base/FileDescriptor.h"
#include "platform/linux/DeviceSleep.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr double kLowest = -40.0;
constexpr double kHighest = 150.0;
constexpr double kMilli = 1000.0;

constexpr std::array kChips{"coretemp"_L1, "k10temp"_L1,     "k8temp"_L1,      "zenpower"_L1,
                            "fam15h"_L1,   "cpu_thermal"_L1, "cpu-thermal"_L1, "via_cputemp"_L1};
constexpr std::array kZones{"x86_pkg_temp"_L1, "cpu-thermal"_L1, "cpu_thermal"_L1, "soc_thermal"_L1, "soc-thermal"_L1};
/// Where nothing else is known, the firmware's own zone is next to the processor.
constexpr auto kFirmwareZone = "acpitz"_L1;
constexpr auto kInput = "input"_L1;

QByteArray line(const QString& path) {
  const FileDescriptor file(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC));
  std::array<char, 128> buffer{};
  const ssize_t count = file ? ::read(file.number(), buffer.data(), buffer.size()) : 0;
  return count > 0 ? QByteArray(buffer.data(), count).trimmed() : QByteArray();
}

/// Degrees Celsius; none for a sensor that says nothing or nonsense, which is as good as absent.
std::optional<double> temperature(const QString& path) {
  const QByteArray text = line(path);
  int thousandths = 0;
  const auto [end, error] = std::from_chars(text.constData(), text.constData() + text.size(), thousandths);
  if (error != std::errc() || end != text.constData() + text.size()) return std::nullopt;
  const double degrees = thousandths / kMilli;
  if (degrees < kLowest || degrees > kHighest) return std::nullopt;
  return degrees;
}

/// 2 for the processor's own reading, 1 for one that stands in for it, 0 for a part of it.
std::size_t rank(const QByteArray& label) {
  if (label.startsWith("Package id") || label.startsWith("Physical id") || label == "Tdie") return 2;
  return label == "Tctl" ? 1 : 0;
}

void readChip(const QDir& chip, std::vector<double>& values) {
  std::array<std::vector<double>, 3> byRank;
  for (const QString& input : chip.entryList({u"temp*_input"_s}, QDir::AllEntries, QDir::Name)) {
    const QString stem = chip.filePath(input.chopped(kInput.size()));
    if (const auto degrees = temperature(stem + kInput)) byRank[rank(line(stem + "label"_L1))].push_back(*degrees);
  }
  const auto best = std::find_if(byRank.rbegin(), byRank.rend(), [](const auto& some) { return !some.empty(); });
  if (best != byRank.rend()) values.insert(values.end(), best->begin(), best->end());
}

/// What `read` gets from a sensor; its last reading while its device sleeps.
template <class Read>
std::vector<double> awake(const QDir& sensor, QHash<QString, std::vector<double>>& known, const Read& read) {
  if (DeviceSleep::isAsleep(sensor.path().toStdString())) return known.value(sensor.path());
  std::vector<double>& values = known[sensor.path()];
  values = read();
  return values;
}

std::vector<double> monitors(const QString& root, QHash<QString, std::vector<double>>& known) {
  std::vector<double> values;
  const QDir all(root + "sys/class/hwmon"_L1);
  for (const QString& name : all.entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name)) {
    const QDir chip(all.filePath(name));
    const QByteArray driver = line(chip.filePath(u"name"_s));
    const bool isProcessor =
        std::ranges::any_of(kChips, [&](auto prefix) { return QLatin1StringView(driver).startsWith(prefix); });
    if (!isProcessor) continue;
    const std::vector<double> readings = awake(chip, known, [&chip] {
      std::vector<double> read;
      readChip(chip, read);
      return read;
    });
    values.insert(values.end(), readings.begin(), readings.end());
  }
  return values;
}

std::vector<double> zones(const QString& root, QHash<QString, std::vector<double>>& known) {
  std::vector<double> values;
  std::vector<double> firmware;
  const QDir all(root + "sys/class/thermal"_L1);
  for (const QString& name : all.entryList({u"thermal_zone*"_s}, QDir::AllEntries, QDir::Name)) {
    const QDir zone(all.filePath(name));
    const QByteArray type = line(zone.filePath(u"type"_s));
    const bool isProcessor =
        std::ranges::any_of(kZones, [&](auto prefix) { return QLatin1StringView(type).startsWith(prefix); });
    const bool isCore = type.startsWith("cpu") && type.contains("thermal");
    if (!isProcessor && !isCore && type != QByteArrayView(kFirmwareZone)) continue;
    const std::vector<double> readings = awake(zone, known, [&zone] {
      const auto degrees = temperature(zone.filePath(u"temp"_s));
      return degrees ? std::vector<double>{*degrees} : std::vector<double>();
    });
    std::vector<double>& into = isProcessor || isCore ? values : firmware;
    into.insert(into.end(), readings.begin(), readings.end());
  }
  return values.empty() ? firmware : values;
}

}  // namespace

SensorTemperatures::SensorTemperatures(const QString& root) : root_(root.endsWith(u'/') ? root : root + u'/') {}

quint32 SensorTemperatures::read(double* values, quint32 capacity) {
  if (!values || capacity == 0) return 0;
  std::vector<double> found = monitors(root_, known_);
  if (found.empty()) found = zones(root_, known_);
  const auto count = std::min<std::size_t>(found.size(), capacity);
  std::copy_n(found.begin(), count, values);
  return static_cast<quint32>(count);
}

}  // namespace tarnwick
