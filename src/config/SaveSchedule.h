#pragma once

#include <optional>

namespace tarnwick {

/// When the settings document is written after a change.
struct SaveSchedule {
  static constexpr double kShortestDelay = 0.25;
  static constexpr double kMinimumContentSaveInterval = 10;

  /// Seconds from now. A change of the layout is saved at once, as far as a burst of changes allows; content that
  /// changes by itself is saved at most once in ten seconds. `sinceLastSave`: seconds since the last save began, absent
  /// when there was none. `pendingIn`: seconds until the save that is already planned, absent when there is none; the
  /// answer is never later than that, so a run of changes can't put a save off. Clocks that jump do no harm.
  static double delay(bool layoutChanged, std::optional<double> sinceLastSave, std::optional<double> pendingIn);
};

}  // namespace tarnwick
