#include "platform/linux/ProcessStat.h"

#include <charconv>

namespace tarnwick {
namespace {

/// The next number of a line; what is no number ends the reading.
template <class T>
bool take(std::string_view& text, T& value) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc()) return false;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return true;
}

}  // namespace

std::optional<ProcessStat> ProcessStat::parse(std::string_view stat) {
  // The name is in parentheses and may hold some itself, blanks and line ends too.
  const auto open = stat.find('(');
  const auto close = stat.rfind(") ");
  if (open == std::string_view::npos || close == std::string_view::npos || close < open) return std::nullopt;
  ProcessStat found{.name = stat.substr(open + 1, close - open - 1)};

  constexpr unsigned kKernelThread = 0x00200000;
  // Fields as the kernel numbers them, from the one behind the state's letter on.
  enum Field { First = 4, Flags = 9, User = 14, System = 15, Start = 22, Resident = 24 };
  stat.remove_prefix(close + 2);
  if (stat.size() < 2) return std::nullopt;
  stat.remove_prefix(1);
  for (int field = First; field <= Resident; ++field) {
    const bool isSigned = field < Flags || (field > System && field < Start);
    quint64 value = 0;
    qint64 ignored = 0;
    if (!(isSigned ? take(stat, ignored) : take(stat, value))) return std::nullopt;
    if (field == Flags) found.isKernelThread = (value & kKernelThread) != 0;
    if (field == User || field == System) found.ticks += value;
    if (field == Start) found.start = value;
    if (field == Resident) found.residentPages = value;
  }
  return found;
}

std::optional<quint64> ProcessStat::ownPages(std::string_view statm) {
  quint64 size = 0;
  quint64 resident = 0;
  quint64 shared = 0;
  if (!take(statm, size) || !take(statm, resident) || !take(statm, shared)) return std::nullopt;
  return resident > shared ? resident - shared : 0;
}

}  // namespace tarnwick
