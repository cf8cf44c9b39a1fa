#pragma once

#include "base/RecordCodec.h"

namespace tarnwick {

/// Settings that this program has on a desktop like this one. Each has a default, and no file needs to hold any.
struct DeskOptions {
  int setupPage = 0;  ///< Where the first run was left, counted from 0; means nothing once it is complete.

  static constexpr auto fields() { return std::tuple(field::defaulted("setupPage", &DeskOptions::setupPage)); }
  bool operator==(const DeskOptions&) const = default;
};

}  // namespace tarnwick
