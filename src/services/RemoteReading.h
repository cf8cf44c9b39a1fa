#pragma once

#include <QDateTime>
#include <optional>

#include "services/RemoteValue.h"

namespace tarnwick {

/// What is painted of a widget's value.
struct RemoteReading {
  RemoteValue value;  ///< While a fetch runs, what was there before it.
  bool isLoading = false;
  std::optional<QDateTime> goodAt;       ///< When the service last gave a value; absent where it never did.
  std::optional<QDateTime> pausedUntil;  ///< Until when its service wants to be left alone.
  bool isOwed = false;                   ///< A refresh waits for the network, the unlocking or to be seen.

  bool operator==(const RemoteReading&) const = default;
};

}  // namespace tarnwick
