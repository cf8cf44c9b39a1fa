#pragma once

#include <QtGlobal>
#include <optional>
#include <string_view>

namespace tarnwick {

/// What the kernel's text files say about one process. Text in, values out; views point into the text.
struct ProcessStat {
  std::string_view name;  ///< As the kernel keeps it: at most 15 bytes, any bytes.
  bool isKernelThread = false;
  quint64 ticks = 0;  ///< User and system time.
  quint64 start = 0;  ///< Ticks from the machine's start to the process's.
  quint64 residentPages = 0;

  /// From "/proc/N/stat".
  static std::optional<ProcessStat> parse(std::string_view stat);
  /// Resident less shared, in pages, from "/proc/N/statm".
  static std::optional<quint64> ownPages(std::string_view statm);
};

}  // namespace tarnwick
