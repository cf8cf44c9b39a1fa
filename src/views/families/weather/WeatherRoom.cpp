#include "views/families/weather/WeatherRoom.h"

#include <array>

#include "views/panels/Room.h"
#include "views/panels/TilePanel.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array kOptions = {
    WidgetOption{.key = option::city,
                 .shape = FieldShape::Place,
                 .label = QT_TRANSLATE_NOOP("Library", "Place"),
                 .placeholder = QT_TRANSLATE_NOOP("Library", "Chicago")},
    WidgetOption{
        .key = option::weatherLocation,
        .shape = FieldShape::Switch,
        .label = QT_TRANSLATE_NOOP("Library", "Current location"),
        .help = QT_TRANSLATE_NOOP("Library", "Shows the weather where this computer is, in place of the above."),
        .value = "current"},
};

void sample(TileSources& sources, const TileSources& samples) {
  auto example = samples.weather.example();
  if (example) example->goodAt.reset();  // It has no age: the day for which it was made up says nothing.
  sources.weather.setExample(std::move(example));
}

/// A cool day with a clear night ahead.
void picture(TileSources& sources) {
  RemoteReading reading;
  reading.value.value = u"6°"_s;
  reading.value.subtitle = u"Partly cloudy"_s;
  reading.value.symbol = u"cloud.sun.fill"_s;
  reading.value.updated = sources.now.addSecs(-240);
  reading.goodAt = reading.value.updated;
  WeatherSnapshot& weather = reading.value.weather.emplace();
  weather.city = u"Kendal"_s;
  weather.utcOffset = sources.now.offsetFromUtc();
  weather.wind = 14;
  weather.windDirection = 225;
  weather.windGusts = 26;
  weather.humidity = 72;
  weather.precipitation = 0.4;
  weather.sunrise = u"07:52"_s;
  weather.sunset = u"15:54"_s;
  weather.highs = {8, 5, 7, 8, 9};
  weather.lows = {2, 2, 3, 1, -1};
  weather.codes = {2, 61, 3, 2, 0};
  for (int day = 0; day < weather.highs.size(); ++day)
    weather.days << sources.now.date().addDays(day).toString(Qt::ISODate);
  constexpr std::array day{3.4, 3.0, 2.6, 2.2, 2.0, 2.2, 2.8, 3.8, 4.8, 5.5, 6.1, 6.8,
                           7.4, 7.8, 8.0, 7.8, 7.2, 6.5, 5.8, 5.2, 4.7, 4.3, 3.9, 3.6};
  for (std::size_t hour = 0; hour < day.size() * 2; ++hour) {
    const std::size_t ofDay = hour % day.size();
    weather.hourly.append(
        {u"%1:00"_s.arg(ofDay, 2, 10, QChar(u'0')), day[ofDay] - 0.06 * (static_cast<double>(hour) - 10)});
  }
  sources.weather.setExample(reading);
}

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Weather), .panel = makeWeatherPanel, .options = kOptions, .sample = sample},
};
constexpr std::array kKinds = {
    RoomRow{.of = kind::weatherCurrent, .content = makeCurrentWeather},
    RoomRow{.of = kind::weatherDetailed, .content = makeWeatherDetails},
    RoomRow{.of = kind::weatherCondition, .content = makeWeatherStatus},
    RoomRow{.of = kind::weatherForecast, .content = makeForecast},
    RoomRow{.of = kind::weatherTodayForecast, .content = makeTodayForecast},
    RoomRow{.of = kind::weatherHourly, .content = makeHourlyWeather},
    RoomRow{.of = kind::weatherWind, .content = makeWind},
    RoomRow{.of = kind::weatherSunCycle, .content = makeSunCycle},
};

}  // namespace

extern const Room kWeatherRoom;
constinit const Room kWeatherRoom{.name = "weather"_L1, .families = kFamilies, .kinds = kKinds, .picture = picture};

}  // namespace tarnwick
