#pragma once

#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

/// The weather now: picture and temperature over the place. Without a reading, its name and a word that says
/// what is missing.
TileContent makeCurrentWeather(const TileRequest& request);
/// Its name and the way to a place, for kinds without a picture of their own.
TileContent makePlacelessWeather(const TileRequest& request);

}  // namespace tarnwick
