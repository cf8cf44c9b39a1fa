#include "platform/linux/ProcText.h"

#include <algorithm>
#include <charconv>

namespace tarnwick {
namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view takeLine(std::string_view& text) {
  const auto end = text.find('\n');
  const auto line = text.substr(0, end);
  text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
  return line;
}

std::string_view takeWord(std::string_view& line) {
  line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
  const auto word = line.substr(0, line.find_first_of(kBlanks));
  line.remove_prefix(word.size());
  return word;
}

std::optional<quint64> takeNumber(std::string_view& line) {
  const auto word = takeWord(line);
  quint64 value = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (error != std::errc() || end != word.data() + word.size()) return std::nullopt;
  return value;
}

/// What follows the name in a line of /proc/stat.
std::optional<ProcText::Ticks> takeTicks(std::string_view line) {
  enum Column { User, Nice, System, Idle, Waiting, Interrupts, SoftInterrupts, Stolen, ColumnCount };
  std::array<quint64, ColumnCount> column{};
  for (std::size_t i = 0; i < column.size(); ++i) {
    const auto value = takeNumber(line);
    // Kernels without the later columns simply end the line.
    if (!value && i <= Idle) return std::nullopt;
    column[i] = value.value_or(0);
  }
  return ProcText::Ticks{column[User], column[System] + column[Interrupts] + column[SoftInterrupts] + column[Stolen],
                         column[Idle] + column[Waiting], column[Nice]};
}

}  // namespace

std::optional<ProcText::Ticks> ProcText::processorTicks(std::string_view stat) {
  auto line = takeLine(stat);
  return takeWord(line) == "cpu" ? takeTicks(line) : std::nullopt;
}

QList<CoreTicks> ProcText::cores(std::string_view stat) {
  QList<CoreTicks> cores;
  while (!stat.empty()) {
    auto line = takeLine(stat);
    const auto name = takeWord(line);
    // They are together at the top of a file that may be long.
    if (!name.starts_with("cpu")) break;
    if (name == "cpu") continue;
    if (const auto ticks = takeTicks(line)) {
      const auto& [user, system, idle, nice] = *ticks;
      cores << CoreTicks{user + system + nice, user + system + nice + idle};
    }
  }
  return cores;
}

std::optional<MemoryReading> ProcText::memory(std::string_view meminfo) {
  constexpr double kKibi = 1024.0;
  std::optional<quint64> total;
  std::optional<quint64> available;
  while (!meminfo.empty() && !(total && available)) {
    auto line = takeLine(meminfo);
    const auto key = takeWord(line);
    if (key == "MemTotal:") total = takeNumber(line);
    if (key == "MemAvailable:") available = takeNumber(line);
  }
  if (!total) return std::nullopt;
  MemoryReading reading{.total = static_cast<double>(*total) * kKibi, .available = {}};
  if (available) reading.available = static_cast<double>(*available) * kKibi;
  return reading;
}

std::optional<MemoryParts> ProcText::memoryParts(std::string_view meminfo) {
  constexpr double kKibi = 1024.0;
  constexpr std::array<std::string_view, 9> keys = {"MemTotal:",     "MemFree:",   "Buffers:",   "Cached:",  "Shmem:",
                                                    "SReclaimable:", "AnonPages:", "SwapTotal:", "SwapFree:"};
  enum Key { Total, Free, Buffers, Cached, Shared, Reclaimable, Anonymous, SwapTotal, SwapFree };
  std::array<double, keys.size()> values{};
  while (!meminfo.empty()) {
    auto line = takeLine(meminfo);
    const auto found = std::find(keys.begin(), keys.end(), takeWord(line));
    if (found == keys.end()) continue;
    values[static_cast<std::size_t>(found - keys.begin())] = static_cast<double>(takeNumber(line).value_or(0)) * kKibi;
  }
  if (values[Total] <= 0) return std::nullopt;
  // Memory that programs share is counted as cache by the kernel, but nobody gets it back.
  MemoryParts parts;
  double left = values[Total];
  const auto take = [&left](double wanted) {
    const double taken = std::clamp(wanted, 0.0, left);
    left -= taken;
    return taken;
  };
  parts.free = take(values[Free]);
  parts.applications = take(values[Anonymous] + values[Shared]);
  parts.cache = take(values[Buffers] + values[Cached] + values[Reclaimable] - values[Shared]);
  parts.system = left;
  parts.swapTotal = values[SwapTotal];
  parts.swapUsed = std::max(0.0, values[SwapTotal] - values[SwapFree]);
  return parts;
}

std::vector<ProcText::Interface> ProcText::interfaces(std::string_view netDev) {
  constexpr int kColumnsBetween = 7;
  std::vector<Interface> found;
  while (!netDev.empty()) {
    auto line = takeLine(netDev);
    const auto colon = line.rfind(':');
    if (colon == std::string_view::npos) continue;
    auto name = line.substr(0, colon);
    name = takeWord(name);
    line.remove_prefix(colon + 1);
    const auto received = takeNumber(line);
    for (int i = 0; i < kColumnsBetween; ++i) takeWord(line);
    const auto sent = takeNumber(line);
    if (received && sent) found.push_back({name, *received, *sent});
  }
  return found;
}

NetworkReading ProcText::traffic(const std::vector<Interface>& interfaces, const std::vector<bool>& hasDevice) {
  const bool anyDevice = std::find(hasDevice.begin(), hasDevice.end(), true) != hasDevice.end();
  NetworkReading sum;
  for (std::size_t i = 0; i < interfaces.size(); ++i) {
    const bool counts = anyDevice ? i < hasDevice.size() && hasDevice[i] : interfaces[i].name != "lo";
    if (!counts) continue;
    sum.received += interfaces[i].received;
    sum.sent += interfaces[i].sent;
  }
  return sum;
}

}  // namespace tarnwick
