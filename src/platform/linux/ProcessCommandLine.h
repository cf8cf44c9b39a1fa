#pragma once

#include <QStringList>

namespace tarnwick {

/// The arguments that a process was started with; empty when it is gone or they cannot be read.
QStringList processCommandLine(qint64 pid);

}  // namespace tarnwick
