#pragma once

#include <QByteArray>
#include <optional>
#include <stop_token>

namespace tarnwick {

/// Reads the names of everything below a folder, for a NameIndex. Links are named and never followed. Folders that hold
/// nothing which people look for are named but never entered: the trash, caches (that of the user, and those that say
/// so by a CACHEDIR.TAG), what version control and package managers keep, and other machines' file systems. What
/// vanishes meanwhile or cannot be read is left out.
struct NameWalk {
  struct Result {
    QByteArray file;        ///< The content of an index.
    qsizetype leftOut = 0;  ///< Names that are not UTF-8.
  };

  /// `root`: a path as the system writes it. Absent when it cannot be read or the walk was asked to stop. Blocks, for
  /// seconds.
  static std::optional<Result> read(const QByteArray& root, const std::stop_token& stop = {});

  /// Whether a folder is never entered because of its name. `path` is relative to the root.
  static bool isAvoided(const QByteArray& path);
};

}  // namespace tarnwick
