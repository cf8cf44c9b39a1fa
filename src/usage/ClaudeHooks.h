#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

#include "claudehook/JSONText.h"

namespace tarnwick {

/// The hooks in Claude Code's settings by which it tells what it does. Other programs' hooks and all else in the file
/// stay as they are written. Failures are DomainErrors, after which nothing has changed.
struct ClaudeHooks {
  /// What Claude Code runs at an event: one word each for the shell, whatever is in them.
  static QString command(const QString& executable, const QString& directory);

  /// The settings with our hooks in them, or without. Those of this executable and folder alone are ours.
  static JSONNode merging(JSONNode settings, const QString& executable, const QString& directory, bool remove);

  /// What a settings file holds, and what it is to hold.
  struct Change {
    QString settings;
    std::optional<QByteArray> before;  ///< Absent where there is no such file, which counts as an empty one.
    QByteArray after;
    bool isRemoval = false;
  };
  /// Reads the settings file and makes what it is to hold. `executables` are all by which our hooks may have been
  /// installed before; the first one is installed, unless `remove`.
  static Change prepared(const QString& settings, const QStringList& executables, const QString& directory,
                         bool remove);
  /// Makes it so, if the file is still what it was; a copy of that stays beside it.
  static void write(const Change& change);
  /// Both.
  static void install(const QString& settings, const QStringList& executables, const QString& directory, bool remove);
};

}  // namespace tarnwick
