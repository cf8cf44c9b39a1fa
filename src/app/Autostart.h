#pragma once

#include <QString>

#include "desktop/Capability.h"

namespace tarnwick {

/// The entry that lets the session start the dock at login: one file in the user's autostart folder. It belongs to the
/// user, who may change it with the desktop's own tools; only the switch in Settings writes it.
struct Autostart {
  QString executable;
  QString file;

  /// The file, below $XDG_CONFIG_HOME or ~/.config.
  static QString path();

  /// Whether the session starts the program: the entry is there, starts this program, and is not switched off.
  bool isOn() const;
  /// No where an entry of that name starts something else: it is left alone.
  Capability capability() const;
  /// Writes the entry or removes it. Of one that the desktop switched off only what does that is taken out. Does
  /// nothing where it is right already. Throws DomainError.
  void set(bool wanted) const;

  static QString notChanged(const QString& file);
};

}  // namespace tarnwick
