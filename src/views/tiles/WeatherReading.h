#pragma once

#include <QString>
#include <optional>

#include "services/RemoteReading.h"
#include "views/theme/WeatherPictures.h"

namespace tarnwick {

/// The weather at one place, ready to be shown.
struct WeatherReading {
  QString temperature;  ///< A number with its sign and "°".
  QString place;
  QString condition;
  WeatherPicture picture = WeatherPicture::CloudSun;

  /// Absent where no temperature was ever read.
  static std::optional<WeatherReading> of(const std::optional<RemoteReading>& reading);

  bool operator==(const WeatherReading&) const = default;
};

}  // namespace tarnwick
