#pragma once

#include "views/window/AppWindow.h"
#include "views/window/DesktopAbilities.h"

namespace tarnwick {

/// The keys, what the pointer does on a dock, and the orders of the command line.
class HelpWindow final : public AppWindow {
  Q_OBJECT
 public:
  /// `abilities` as the program is now: keys that are off or belong to others are left out.
  HelpWindow(AppStore& store, const DesktopAbilities& abilities);
};

}  // namespace tarnwick
