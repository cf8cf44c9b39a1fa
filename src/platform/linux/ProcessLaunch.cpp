#include "platform/linux/ProcessLaunch.h"

#include <unistd.h>

#include <charconv>
#include <string>

#include "platform/linux/KernelFile.h"
#include "platform/linux/ProcessStat.h"

namespace tarnwick {
namespace {

/// When the machine was started, in seconds since 1970.
std::optional<qint64> bootTime() {
  constexpr std::string_view kLine = "\nbtime ";
  KernelFile file("/proc/stat");
  const auto text = file.read();
  const auto at = text ? text->find(kLine) : std::string_view::npos;
  if (at == std::string_view::npos) return std::nullopt;
  const std::string_view number = text->substr(at + kLine.size());
  qint64 seconds = 0;
  const auto read = std::from_chars(number.data(), number.data() + number.size(), seconds);
  return read.ec == std::errc() ? std::optional(seconds) : std::nullopt;
}

}  // namespace

std::optional<quint64> processStart(int pid) {
  KernelFile file("/proc/" + std::to_string(pid) + "/stat");
  const auto text = file.read();
  const auto stat = text ? ProcessStat::parse(*text) : std::nullopt;
  return stat ? std::optional(stat->start) : std::nullopt;
}

std::optional<qint64> processLaunch(int pid) {
  const auto start = processStart(pid);
  const auto boot = bootTime();
  const qint64 ticks = ::sysconf(_SC_CLK_TCK);
  if (!start || !boot || ticks <= 0) return std::nullopt;
  return *boot * 100 + static_cast<qint64>(*start) * 100 / ticks;
}

}  // namespace tarnwick
