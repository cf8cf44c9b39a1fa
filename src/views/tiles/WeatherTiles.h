#pragma once

#include <optional>

#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// The weather now: picture and temperature over the place. Without a place, its name and a word that leads to one.
struct CurrentWeatherContent {
  std::optional<WeatherReading> reading;
  QString name;

  bool operator==(const CurrentWeatherContent&) const = default;
};
CurrentWeatherContent makeCurrentWeather(const TileRequest& request);
TileText describe(const CurrentWeatherContent& content, const QString& name);
void paint(TileCanvas& canvas, const CurrentWeatherContent& content);

/// The word on weather tiles that know no place yet.
QString choosePlaceWord();

}  // namespace tarnwick
