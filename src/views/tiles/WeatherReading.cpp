#include "views/tiles/WeatherReading.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

WeatherPicture pictureOf(const QString& symbol) {
  if (symbol == "sun.max.fill"_L1) return WeatherPicture::Sun;
  return symbol == "cloud.sun.fill"_L1 ? WeatherPicture::CloudSun : WeatherPicture::Cloud;
}

}  // namespace

std::optional<WeatherReading> WeatherReading::of(const std::optional<RemoteReading>& reading) {
  if (!reading || !reading->value.value) return std::nullopt;
  const RemoteValue& value = reading->value;
  WeatherReading weather;
  weather.temperature = *value.value;
  weather.condition = value.subtitle;
  weather.picture = pictureOf(value.symbol);
  if (value.weather) weather.place = value.weather->city;
  return weather;
}

}  // namespace tarnwick
