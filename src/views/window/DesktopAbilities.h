#pragma once

#include <QString>
#include <optional>

#include "desktop/Capability.h"

namespace tarnwick {

/// What the program uses of the desktop, and whether it is there.
struct DesktopAbilities {
  /// Whether windows can be translucent.
  bool isComposited = true;
  /// Whether docks can come out at the edges of the screen.
  Capability edges;
  /// Whether the trigger area is the outermost pixel whatever is set.
  bool feelsOnePixelOnly = false;
  Capability windows;
  /// Whether windows are known by their virtual desktop.
  Capability workspaces;
  /// Whether windows of other apps can be moved.
  Capability movesWindows;
  /// Whether small pictures of windows can be had.
  Capability windowPictures;
  /// Whether the desktop tells where windows are.
  Capability frames;
  /// Whether it tells which of them ask for attention.
  Capability attention;
  Capability keys;
  /// Whether that is the desktop's answer yet. Until then no key is promised, and none is said to be missing.
  bool keysAnswered = true;
  /// Whether the program may take keys that nobody chose.
  Capability unaskedKeys;
  /// Whether apps can show the numbers of their keys.
  Capability appNumbers;
  QString dockKey;  ///< As a person reads it; empty while it is switched off.
  /// Absent while there is no command bar to open; empty while no key opens it.
  std::optional<QString> commandBarKey;
  /// Whether the desktop tells what is copied.
  Capability clipboard;
  /// Whether it tells which app copied; without that it says how that is guessed.
  Capability clipboardOwners;
  /// Whether it tells that an app ended whose copy was on the clipboard.
  Capability clipboardEnds;
  Capability notifications;
  Capability tray;        ///< Whether there is a place for the status item.
  Capability loginEntry;  ///< Whether the entry that starts the program at login is its own.
  /// Whether there is a dock of the system's that can be hidden.
  Capability systemDock;
  /// Whether windows can be left out of pictures of the screen.
  Capability captureProtection;
  /// Whether the user asked for less motion.
  bool reducesMotion = false;
  /// Whether the desktop writes hours as 24; absent where it leaves that to the language.
  std::optional<bool> uses24Hour = std::nullopt;
};

}  // namespace tarnwick
