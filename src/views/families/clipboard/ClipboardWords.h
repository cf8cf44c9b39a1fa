#pragma once

#include <QString>

#include "clipboard/ClipboardEntry.h"

namespace tarnwick {

/// What tile and panel say of copied things.
struct ClipboardWords {
  /// "Link".
  static QString kind(ClipboardEntry::Kind kind, bool isFolder = false);
  /// The picture that stands for such things.
  static QString symbol(ClipboardEntry::Kind kind, bool isFolder = false);
  /// The thing on one line, as long as a line ever is; the name of a file.
  static QString title(const ClipboardEntry& entry);
  /// The same where there is little space: of an address the host alone.
  static QString shortTitle(const ClipboardEntry& entry);
};

}  // namespace tarnwick
