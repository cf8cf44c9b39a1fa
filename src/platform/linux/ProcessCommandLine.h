#pragma once

#include <QStringList>

namespace tarnwick {

/// The words that a process was started with; empty when it is gone or does not tell.
QStringList processCommandLine(qint64 pid);

}  // namespace tarnwick
