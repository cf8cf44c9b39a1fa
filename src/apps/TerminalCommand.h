#pragma once

#include <QString>
#include <QStringList>

#include "apps/AppEnvironment.h"

namespace tarnwick {

/// How a program is run in the user's terminal.
struct TerminalCommand {
  /// The command that opens a terminal with `command` in it: through xdg-terminal-exec, the terminal that the user
  /// named, the system's choice, or a known one that is installed, in this order. Empty when there is none. Looks at
  /// the disk.
  static QStringList wrap(const QStringList& command, const AppEnvironment& environment);
};

}  // namespace tarnwick
