#pragma once

namespace tarnwick {

/// Teaches Qt that what a screen reader does to a button, a switch, a tick or a card is a click, with all that follows
/// from one. Qt's own description toggles what can be checked without one, so that it looks changed and nothing was
/// done. Whatever is such a control calls it; safe to call again.
void installControlAccessibility();

}  // namespace tarnwick
