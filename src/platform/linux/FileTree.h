#pragma once

#include <QString>
#include <functional>
#include <stop_token>

namespace tarnwick {

/// The reason of the system for which a step on files was not carried out.
struct FileFault {
  int code = 0;  ///< As in errno; ECANCELED when it was stopped.

  /// As a person reads it, without a full stop.
  QString reason() const;
};

/// Steps on files and whole folders that are carried out wholly or not at all. They block and throw FileFault. Symbolic
/// links are handled as themselves, never followed.
struct FileTree {
  static bool exists(const QString& path);
  static bool isFolder(const QString& path);

  /// Copies with permissions and times. `to` must not exist; on a failure nothing is left there.
  static void copy(const QString& from, const QString& to, const std::stop_token& stop);
  /// Gives another name within one file system. False when `to` is taken; it is never replaced.
  static bool rename(const QString& from, const QString& to);
  static void remove(const QString& path);

  /// Runs `make` with names for `wanted` in `folder`, until one is free: `make` gives false for one that is taken.
  /// Gives the whole path that it took.
  static QString underFreeName(const QString& folder, const QString& wanted, bool isFolder,
                               const std::function<bool(const QString& path)>& make);
};

}  // namespace tarnwick
