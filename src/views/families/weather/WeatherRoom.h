#pragma once

#include "views/theme/WeatherPictures.h"
#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

/// The weather now: picture and temperature over the place. Without a reading, its name and a word that says
/// what is missing.
TileContent makeCurrentWeather(const TileRequest& request);
/// A picture that stands for the weather, its name and the way to a place, for kinds that have nothing else to show.
TileContent makePlacelessWeather(const TileRequest& request, WeatherPicture picture);

}  // namespace tarnwick
