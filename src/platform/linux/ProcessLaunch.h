#pragma once

#include <QtGlobal>
#include <optional>

namespace tarnwick {

/// When a process began: ticks since the machine's start, absent where there is no such process. Any thread.
std::optional<quint64> processStart(int pid);

/// When a process began: hundredths of a second since 1970, absent where there is no such process. Any thread.
std::optional<qint64> processLaunch(int pid);

}  // namespace tarnwick
