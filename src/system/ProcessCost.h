#pragma once

namespace tarnwick {

/// What this program itself costs.
struct ProcessCost {
  /// Seconds of processor time since it started, user and system together, over all threads; 0 on failure.
  static double cpuSeconds();
};

}  // namespace tarnwick
