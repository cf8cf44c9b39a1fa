#pragma once

#include <QString>
#include <QUuid>
#include <functional>
#include <optional>

#include "desktop/Capability.h"
#include "desktop/HotKeys.h"
#include "desktop/Screens.h"
#include "store/UndoableEdits.h"

namespace tarnwick {

/// What Settings asks of the rest of the program. What is borrowed outlives the window. A function that is empty takes
/// its button away; a capability that is not asked for counts as there.
struct SettingsServices {
  UndoableEdits* edits = nullptr;  ///< Required: what is changed can be taken back.
  Screens* screens = nullptr;      ///< Names the displays. Without it only those in the settings are known.

  /// Opens the library with a profile to add to; a null one means the active one.
  std::function<void(const QUuid& profile)> addWidgets{};
  /// Opens the form of a widget.
  std::function<void(const QUuid& widget)> openEditor{};
  /// Asks for a folder of calendar files and adds it to the settings.
  std::function<void()> addCalendarFolder{};
  std::function<void()> continueSetup{};
  std::function<void()> restoreSystemDock{};
  /// Asks for a picture and puts a copy of it on the docks.
  std::function<void()> chooseDockPicture{};
  /// Shows a folder in the file manager.
  std::function<void(const QString& folder)> openFolder{};

  /// Whether a key could be taken for a new action at this moment, and the sentence where not. It may keep the key
  /// until the settings change next or `recordsKeys(false)` is called.
  std::function<HotKeyBinding(const HotKeyWish& wish)> tryKey{};
  /// Whether a key that the settings ask for is the program's now. Not asked while one is recorded.
  std::function<bool(const HotKeyWish& wish)> holdsKey{};
  /// True while a key is being recorded: the program's own keys must reach the window then, so they are given back to
  /// the desktop; false takes them anew.
  std::function<void(bool recording)> recordsKeys{};
  /// Whether there is a command bar to open.
  std::function<bool()> hasCommandBar{};
  /// The key that opens the command bar now, as a person reads it: empty while none does, absent while it is switched
  /// off or there is none.
  std::function<std::optional<QString>()> commandBarKey{};

  std::function<Capability()> keys{};
  std::function<Capability()> edges{};       ///< Whether docks can come out at the edges of the screen.
  std::function<bool()> feelsOnePixelOnly{};  ///< Whether the trigger area is the outermost pixel whatever is set.
  std::function<Capability()> systemDock{};  ///< Whether there is a dock of the system's that can be hidden.
  std::function<Capability()> notifications{};
  std::function<Capability()> tray{};               ///< Whether there is a place for the status item.
  std::function<Capability()> loginEntry{};         ///< Whether the entry that starts it at login is its own.
  std::function<Capability()> captureProtection{};  ///< Whether windows can be left out of pictures of the screen.

  std::function<bool()> reducesMotion{};  ///< Whether pictures stand still.
};

}  // namespace tarnwick
