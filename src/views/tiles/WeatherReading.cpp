#include "views/tiles/WeatherReading.h"

#include <QTimeZone>
#include <array>
#include <utility>

#include "base/LocalFigures.h"
#include "views/tiles/RemoteState.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array kPictures{
    std::pair{"sun.max.fill"_L1, WeatherPicture::Sun},
    std::pair{"cloud.sun.fill"_L1, WeatherPicture::CloudSun},
    std::pair{"cloud.fog.fill"_L1, WeatherPicture::Fog},
    std::pair{"cloud.drizzle.fill"_L1, WeatherPicture::Drizzle},
    std::pair{"cloud.rain.fill"_L1, WeatherPicture::Rain},
    std::pair{"cloud.snow.fill"_L1, WeatherPicture::Snow},
    std::pair{"cloud.bolt.rain.fill"_L1, WeatherPicture::Thunder},
};

/// Where a service writes no time for the sun it may give the same one twice.
bool isNightAt(const WeatherSnapshot& weather, const QDateTime& there) {
  const auto sun = SunTimes::of(weather);
  return sun ? !sun->isUpAt(there.time()) : false;
}

}  // namespace

std::optional<WeatherReading> WeatherReading::of(const DockWidget& widget, const TileSources& sources) {
  const std::optional<RemoteReading> reading = sources.weather.of(widget.id);
  if (!reading || !reading->value.value) return std::nullopt;
  const RemoteValue& value = reading->value;
  WeatherReading weather;
  weather.temperature = degrees(*value.value, sources);
  weather.place = value.weather ? value.weather->city : placeOf(widget);
  weather.isNight = value.weather && isNightAt(*value.weather, momentAt(*value.weather, sources.now));
  const RemoteState state = RemoteState::of(*reading, sources);
  weather.isLoading = state.isLoading;
  weather.isFailed = state.hasFailed;
  weather.problem = state.problem;
  weather.age = state.age;
  // A failure has its sentence where the condition was.
  if (!value.failed && !value.loading) weather.condition = value.subtitle;
  weather.picture = pictureOf(value.symbol, weather.isNight);
  return weather;
}

QString WeatherReading::problemOf(const std::optional<RemoteReading>& reading, const TileSources& sources) {
  return reading ? RemoteState::of(*reading, sources).problem : QString();
}

QString WeatherReading::placeOf(const DockWidget& widget) {
  if (widget.options.value(option::weatherLocation) == value::current) return TileWords::tr("Current location");
  return widget.options.value(option::city).trimmed();
}

WeatherPicture WeatherReading::pictureOf(const QString& symbol, bool atNight) {
  for (const auto& [name, picture] : kPictures) {
    if (symbol != name) continue;
    if (atNight && picture == WeatherPicture::Sun) return WeatherPicture::Moon;
    if (atNight && picture == WeatherPicture::CloudSun) return WeatherPicture::CloudMoon;
    return picture;
  }
  return WeatherPicture::Cloud;
}

QDateTime WeatherReading::momentAt(const WeatherSnapshot& weather, const QDateTime& now) {
  return weather.utcOffset ? now.toOffsetFromUtc(*weather.utcOffset) : now;
}

QString WeatherReading::degrees(const QString& ascii, const TileSources& sources) {
  return LocalFigures::of(ascii, sources.locale).replace(u'-', u'−');
}

std::optional<SunTimes> SunTimes::of(const WeatherSnapshot& weather) {
  const SunTimes sun{QTime::fromString(weather.sunrise, "HH:mm"_L1), QTime::fromString(weather.sunset, "HH:mm"_L1)};
  if (!sun.rise.isValid() || !sun.set.isValid() || sun.rise >= sun.set) return std::nullopt;
  return sun;
}

double SunTimes::shareAt(QTime time) const {
  return static_cast<double>(rise.msecsTo(time)) / static_cast<double>(rise.msecsTo(set));
}

}  // namespace tarnwick
