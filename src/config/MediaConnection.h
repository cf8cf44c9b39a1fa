#pragma once

#include <QString>
#include <optional>

#include "config/DockConfiguration.h"

namespace tarnwick {

/// Which source of playback the settings remember. Nobody need allow it here, so it is the desktop's until the user
/// chose another one, or none.
struct MediaConnection {
  static constexpr auto kDesktop = QLatin1StringView("system");
  /// Stands among the connections that the user made, unless there are none or this one was taken away.
  static constexpr auto kMark = QLatin1StringView("media");

  /// Absent where the user wants none.
  static std::optional<QString> of(const DockConfiguration& config);
  static void set(DockConfiguration& config, const std::optional<QString>& source);
};

}  // namespace tarnwick
