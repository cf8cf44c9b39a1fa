#pragma once

#include <optional>

#include "config/DockConfiguration.h"
#include "views/theme/Palette.h"

namespace tarnwick {

/// What the desktop, or the user in its place, wants of everything that is painted. Like the toolkit's palette there is
/// one for the whole program, which sets it; docks, panels, bubbles and windows read it when they take their look.
struct DesktopLook {
  std::optional<bool> dark = std::nullopt;  ///< Absent until the desktop has answered.
  bool highContrast = false;

  static const DesktopLook& now();
  static void set(const DesktopLook& look);
  bool operator==(const DesktopLook&) const = default;
};

/// The style that docks are painted in: the chosen one, or the one that follows light and dark.
DockStyle shownStyle(const DockConfiguration& config);

}  // namespace tarnwick
