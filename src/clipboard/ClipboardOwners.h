#pragma once

#include <QString>
#include <functional>

#include "apps/AppIndex.h"
#include "clipboard/ports/Pasteboard.h"

namespace tarnwick {

/// Which application put something on the clipboard.
struct ClipboardOwners {
  /// The name of the program that a process runs.
  using ExecutableOf = std::function<QString(qint64 pid)>;

  /// The id of its desktop entry, found as that of a window is; empty where it is not known.
  static QString applicationOf(const PasteboardOwner& owner, const AppIndex& apps, const ExecutableOf& executableOf);
};

}  // namespace tarnwick
