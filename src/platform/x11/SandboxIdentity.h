#pragma once

#include <QByteArray>
#include <QString>

namespace tarnwick {

/// Which Flatpak or Snap a process runs in.
struct SandboxIdentity {
  /// Asks the kernel about a process; empty if it runs in neither, is gone or may not be asked about.
  static QString of(qint64 pid);
  /// The application's id in the file that Flatpak puts into each of its sandboxes.
  static QString fromFlatpakInfo(const QByteArray& text);
  /// The snap's name in a process's list of control groups.
  static QString fromControlGroups(const QByteArray& text);
};

}  // namespace tarnwick
