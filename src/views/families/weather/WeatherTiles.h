#pragma once

#include <optional>

#include "views/tiles/GenericTile.h"
#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// The weather now: picture and temperature over the place. Without a reading, its name and a word that says
/// what is missing.
struct CurrentWeatherContent {
  std::optional<WeatherReading> reading;
  GenericContent missing;  ///< What it shows without a reading.

  bool operator==(const CurrentWeatherContent&) const = default;
};
CurrentWeatherContent makeCurrentWeather(const TileRequest& request);
TileText describe(const CurrentWeatherContent& content, const QString& name);
void paint(TileCanvas& canvas, const CurrentWeatherContent& content);

/// Its name and the way to a place, for kinds without a picture of their own.
GenericContent makePlacelessWeather(const TileRequest& request);

}  // namespace tarnwick
