#pragma once

#include <optional>

#include "config/DockConfiguration.h"

namespace tarnwick {

/// One document in the place of another, field by field, tiles and their options included: what of it can be taken
/// back as long as nothing that it brought was changed since. What was entered elsewhere meanwhile stays.
///
/// A timer that runs on, glasses that are counted, days that are ticked and a profile that a rule chose are no change
/// of what was brought. They stay as well; days are those of both.
class DocumentChange {
 public:
  DocumentChange(const DockConfiguration& before, const DockConfiguration& after) : before_(before), after_(after) {}

  /// Whether everything that the change brought is in `config` as it was brought.
  bool stands(const DockConfiguration& config) const;
  /// `config` with the old values where the change brought new ones. Absent when that is not so, or when the old
  /// values no longer fit what is there.
  std::optional<DockConfiguration> takenBack(const DockConfiguration& config) const;
  DocumentChange reversed() const { return {after_, before_}; }

 private:
  DocumentChange goneOn(const DockConfiguration& config) const;

  DockConfiguration before_;
  DockConfiguration after_;
};

}  // namespace tarnwick
