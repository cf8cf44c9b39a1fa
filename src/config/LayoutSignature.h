#pragma once

#include "config/DockConfiguration.h"

namespace tarnwick {

/// A configuration without what changes while the program merely runs: timers, counters, notes, lists. Equal signatures
/// mean that the dock's layout need not be redone and that a save may wait.
class LayoutSignature {
 public:
  explicit LayoutSignature(const DockConfiguration& configuration);

  const DockConfiguration& stable() const { return stable_; }
  bool operator==(const LayoutSignature&) const = default;

 private:
  DockConfiguration stable_;
};

}  // namespace tarnwick
