#pragma once

#include <QString>

namespace tarnwick {

/// The entry that lets the session start the dock at login: one file in the user's autostart folder.
struct Autostart {
  /// The file, below $XDG_CONFIG_HOME or ~/.config.
  static QString path();
  /// Writes the entry for `executable`, or removes it. Does nothing where it is right already. Throws DomainError.
  static void apply(bool wanted, const QString& executable, const QString& file = path());
};

}  // namespace tarnwick
