#pragma once

#include <QRect>
#include <functional>

#include "desktop/Panels.h"
#include "desktop/Screens.h"
#include "views/theme/Palette.h"

namespace tarnwick {

class DockController;
class MessageBubble;

/// What there is to know about a bubble's surroundings.
struct BubbleSurroundings {
  const DockController& dock;
  const Screens& screens;
  int raised = 0;     ///< How far it is lifted over another bubble.
  QString display{};  ///< The display whose dock it prefers.
  /// The panel that is open on a display, in desktop coordinates; empty for none.
  std::function<QRect(const QString& display)> panel{};
};

/// Where a bubble is placed: over the middle of the dock of its display, or else of the first one, on the side of the
/// screen's inside, and clear of an open panel; where there is no dock, at the bottom of the main screen. There must be
/// a screen.
PanelPlacement bubblePlacement(const MessageBubble& bubble, const BubbleSurroundings& around);

/// A rectangle out of another one's way, within `bounds`: beside it where the way is shorter, else over or below it.
/// Where there is no such place, the one that is covered least.
QRect clearOf(const QRect& taken, const QRect& wanted, const QRect& bounds);

/// What lies behind a window of ours now.
Backdrop backdropOf(const Panels& panels);

}  // namespace tarnwick
