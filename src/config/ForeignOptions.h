#pragma once

#include "config/DockConfiguration.h"

namespace tarnwick {

/// Options that only this computer's user may set: which program a widget runs, which folder it reads, which server of
/// the user's own it asks or commands, and that it may ask where the user is. What comes from elsewhere never brings
/// them.
struct ForeignOptions {
  /// Leaves them out. A widget that `own` is already keeps those that have the same value there; nullptr for none.
  static void leaveOut(DockWidget& widget, const DockWidget* own = nullptr);
  /// The same for all widgets of an imported document, of which `own` may have some.
  static void leaveOut(DockConfiguration& imported, const DockConfiguration& own);
};

}  // namespace tarnwick
