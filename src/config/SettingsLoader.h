#pragma once

#include <QString>

#include "config/DockConfiguration.h"
#include "config/KeptSettings.h"

namespace tarnwick {

/// Loads the settings file at the start of a run, and sees to it that no byte of the user's settings is overwritten
/// before there is a copy: a file that can't be used is first preserved as `config-recovery-<seconds>.json` beside it.
struct SettingsLoader {
  /// Where the configuration comes from. After a recovery it is a new one, as in a first run.
  enum class Origin { FirstRun, File, Recovery };

  struct Result {
    DockConfiguration configuration;  ///< The file's, or a new one.
    bool ready = true;                ///< Whether saving is allowed in this run; false when nothing could be preserved.
    QString error;                    ///< For the user; empty when all went well.
    Origin origin = Origin::FirstRun;
    /// After a recovery: the preserved file, where all of it can be used but single widgets.
    KeptSettings kept = {};
  };

  /// `unixSeconds` is the current time, which names the recovery file. A path with nothing at it is a first run and no
  /// failure.
  static Result load(const QString& path, qint64 unixSeconds);
  /// Whether such a file stands in a folder: what is in it may still be wanted. May wait for the disk.
  static bool hasKeptAside(const QString& folder);
  /// Where what was entered and not saved is preserved with a recovery file: `content-recovery-<seconds>.json`.
  static QString contentName(qint64 unixSeconds);
  static QString contentBeside(const QString& recoveryFile);
};

}  // namespace tarnwick
