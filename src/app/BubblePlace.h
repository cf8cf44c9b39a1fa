#pragma once

#include "desktop/Panels.h"
#include "desktop/Screens.h"
#include "views/theme/Palette.h"

namespace tarnwick {

class DockController;
class MessageBubble;

/// Where a bubble stands: over the middle of the first dock, on the side of the screen's inside; where no dock is
/// shown, at the bottom of the main screen. `raised` lifts it over another bubble. There must be a screen.
PanelPlacement bubblePlacement(const MessageBubble& bubble, const DockController& dock, const Screens& screens,
                               int raised = 0);

/// What lies behind a window of ours now.
Backdrop backdropOf(const Panels& panels);

}  // namespace tarnwick
