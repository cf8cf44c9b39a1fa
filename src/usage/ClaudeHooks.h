#pragma once

#include <QString>
#include <QStringList>

#include "claudehook/JSONText.h"

namespace tarnwick {

/// The hooks in Claude Code's settings by which it tells what it does. Other programs' hooks and all else in the file
/// stay as they are written. Failures are DomainErrors, after which nothing has changed.
struct ClaudeHooks {
  /// What Claude Code runs at an event: one word each for the shell, whatever is in them.
  static QString command(const QString& executable, const QString& directory);

  /// The settings with our hooks in them, or without. Those of this executable and folder alone are ours.
  static JSONNode merging(JSONNode settings, const QString& executable, const QString& directory, bool remove);

  /// Changes the settings file, of which a copy stays beside it. `executables` are all by which our hooks may have been
  /// installed before; the first one is installed, unless `remove`. A file that is not there is an empty one.
  static void install(const QString& settings, const QStringList& executables, const QString& directory, bool remove);
};

}  // namespace tarnwick
