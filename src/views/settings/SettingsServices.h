#pragma once

#include <functional>

#include "desktop/Screens.h"
#include "store/Commands.h"
#include "store/UndoableEdits.h"
#include "views/settings/KeyRecorder.h"
#include "views/window/DesktopAbilities.h"

namespace tarnwick {

/// What Settings asks of the rest of the program. All of it outlives the window.
struct SettingsServices {
  UndoableEdits& edits;  ///< What is changed can be taken back.
  Screens& screens;      ///< Names the displays.
  Commands& commands;
  KeyRecorder& keys;
  std::function<DesktopAbilities()> abilities;  ///< Required.
};

}  // namespace tarnwick
