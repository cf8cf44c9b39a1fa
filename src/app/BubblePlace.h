#pragma once

#include "desktop/Panels.h"
#include "desktop/Screens.h"
#include "views/theme/Palette.h"

namespace tarnwick {

class DockController;
class MessageBubble;

/// Where a bubble stands: over the middle of the dock of `display`, or else of the first one, on the side of the
/// screen's inside; where there is no dock, at the bottom of the main screen. `raised` lifts it over another bubble.
/// There must be a screen.
PanelPlacement bubblePlacement(const MessageBubble& bubble, const DockController& dock, const Screens& screens,
                               int raised = 0, const QString& display = {});

/// What lies behind a window of ours now.
Backdrop backdropOf(const Panels& panels);

}  // namespace tarnwick
