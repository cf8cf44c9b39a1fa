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

}  // namespace

std::optional<ProcText::Ticks> ProcText::processorTicks(std::string_view stat) {
  auto line = takeLine(stat);
  if (takeWord(line) != "cpu") return std::nullopt;
  enum Column { User, Nice, System, Idle, Waiting, Interrupts, SoftInterrupts, Stolen, ColumnCount };
  std::array<quint64, ColumnCount> column{};
  for (std::size_t i = 0; i < column.size(); ++i) {
    const auto value = takeNumber(line);
    // Kernels without the later columns simply end the line.
    if (!value && i <= Idle) return std::nullopt;
    column[i] = value.value_or(0);
  }
  return Ticks{column[User], column[System] + column[Interrupts] + column[SoftInterrupts] + column[Stolen],
               column[Idle] + column[Waiting], column[Nice]};
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
