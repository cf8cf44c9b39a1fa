#pragma once

#include <memory>

#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

struct PanelContext;
class TilePanel;

// The tiles. Without a place they show the way to one; where all but the temperature is missing, that alone.

/// Picture and temperature over the place.
TileContent makeCurrentWeather(const TileRequest& request);
/// The same with the day's temperatures, humidity and wind.
TileContent makeWeatherDetails(const TileRequest& request);
/// The condition in words.
TileContent makeWeatherStatus(const TileRequest& request);
/// The next four days.
TileContent makeForecast(const TileRequest& request);
/// Today and two more days.
TileContent makeTodayForecast(const TileRequest& request);
/// The temperature of the coming hours as a line.
TileContent makeHourlyWeather(const TileRequest& request);
TileContent makeWind(const TileRequest& request);
/// The way of the sun today.
TileContent makeSunCycle(const TileRequest& request);

std::unique_ptr<TilePanel> makeWeatherPanel(const PanelContext& context);

}  // namespace tarnwick
