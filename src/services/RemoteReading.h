#pragma once

#include <QDateTime>
#include <optional>

#include "services/RemoteValue.h"

namespace tarnwick {

/// What a refresh that is due waits for.
enum class RemoteWait { Network, Unlocking, Waking, BeingSeen };

/// What is painted of a widget's value.
struct RemoteReading {
  RemoteValue value;                     ///< While a fetch runs, what was there before it.
  bool isLoading = false;                ///< A fetch runs, for so long that it is worth a sign.
  bool isAsking = false;                 ///< A fetch runs, seen or not.
  std::optional<QDateTime> goodAt;       ///< When the service last gave a value; absent where it never did.
  std::optional<QDateTime> pausedUntil;  ///< Until when its service wants to be left alone.
  std::optional<RemoteWait> waitsFor;    ///< A refresh is due, and begins when this has come.

  bool operator==(const RemoteReading&) const = default;
};

}  // namespace tarnwick
