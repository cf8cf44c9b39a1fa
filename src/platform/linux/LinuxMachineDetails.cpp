#include "platform/linux/LinuxMachineDetails.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <cmath>

#include "platform/linux/ProcText.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr std::size_t kShortFile = 256;
constexpr double kKilo = 1000;

/// The first number of a short text.
std::optional<double> firstNumber(KernelFile& file) {
  const auto text = file.read(kShortFile);
  if (!text) return std::nullopt;
  const auto word = text->substr(0, text->find_first_of(" \n"));
  bool ok = false;
  const double value = QByteArray(word.data(), static_cast<qsizetype>(word.size())).toDouble(&ok);
  return ok && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

}  // namespace

LinuxMachineDetails::LinuxMachineDetails(const QString& root)
    : stat_(KernelFile::folderOf(root) + "proc/stat"),
      meminfo_(KernelFile::folderOf(root) + "proc/meminfo"),
      loadavg_(KernelFile::folderOf(root) + "proc/loadavg"),
      uptime_(KernelFile::folderOf(root) + "proc/uptime"),
      policies_(KernelFile::folderOf(root) + "sys/devices/system/cpu/cpufreq") {}

MachineReading LinuxMachineDetails::read() {
  MachineReading reading;
  if (const auto text = stat_.read()) reading.cores = ProcText::cores(*text);
  if (const auto text = meminfo_.read()) reading.memory = ProcText::memoryParts(*text);
  reading.load = firstNumber(loadavg_);
  reading.uptime = firstNumber(uptime_);
  reading.frequency = frequency();
  return reading;
}

/// Cores of a kind share a policy, so a machine has few.
std::optional<double> LinuxMachineDetails::frequency() {
  std::optional<double> fastest;
  const QString folder = QString::fromStdString(policies_);
  for (const QString& policy : QDir(folder).entryList({u"policy*"_s}, QDir::Dirs)) {
    QFile file(folder + u'/' + policy + u"/scaling_cur_freq"_s);
    if (!file.open(QIODevice::ReadOnly)) continue;
    bool ok = false;
    const double kilohertz = file.read(kShortFile).trimmed().toDouble(&ok);
    if (ok && kilohertz > 0) fastest = std::max(fastest.value_or(0), kilohertz * kKilo);
  }
  return fastest;
}

}  // namespace tarnwick
