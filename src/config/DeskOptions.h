#pragma once

#include "base/RecordCodec.h"

namespace tarnwick {

/// Settings that this program has on a desktop like this one. Each has a default, and no file needs to hold any.
struct DeskOptions {
  int setupPage = 0;              ///< Where the first run was left, counted from 0; means nothing once it is complete.
  bool workspaceWindows = false;  ///< A dock shows only windows of the virtual desktop that is shown.
  bool displayWindows = false;    ///< A dock shows only windows of its own display.
  bool appKeys = true;            ///< Super+1 to Super+9 open the first apps of the dock while its shortcut is on.

  static constexpr auto fields() {
    using O = DeskOptions;
    return std::tuple(field::defaulted("setupPage", &O::setupPage),
                      field::defaulted("workspaceWindows", &O::workspaceWindows),
                      field::defaulted("displayWindows", &O::displayWindows), field::defaulted("appKeys", &O::appKeys));
  }
  bool operator==(const DeskOptions&) const = default;
};

}  // namespace tarnwick
