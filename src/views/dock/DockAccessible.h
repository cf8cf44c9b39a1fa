#pragma once

namespace tarnwick {

/// Teaches Qt to describe a DockView as a bar of buttons, one for each tile and running application. Safe to call
/// again.
void installDockAccessibility();

}  // namespace tarnwick
