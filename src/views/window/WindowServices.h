#pragma once

#include <functional>

#include "apps/InstalledApps.h"
#include "desktop/Screens.h"
#include "store/Commands.h"
#include "store/UndoableEdits.h"
#include "store/WidgetEditor.h"
#include "views/window/DesktopAbilities.h"
#include "views/window/WidgetPreviews.h"

namespace tarnwick {

class Connections;

/// What the program's own windows ask of the rest of it. All of it outlives them.
struct WindowServices {
  UndoableEdits& edits;  ///< What is changed can be taken back.
  Commands& commands;
  InstalledApps& apps;
  Screens& screens;  ///< Names the displays.
  WidgetEditor::Hooks& forms;
  Connections& connections;  ///< To services on the net.
  PreviewSources previews;
  std::function<DesktopAbilities()> abilities;  ///< Never empty.
};

}  // namespace tarnwick
