#include <gtest/gtest.h>

#include <QTimeZone>
#include <cmath>
#include <functional>

#include "DockFixture.h"
#include "views/families/clocks/DateTiles.h"
#include "views/families/weather/WeatherFacts.h"
#include "views/tiles/TilePainter.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick::testing {
namespace {

using namespace Qt::StringLiterals;

/// A forecast that was read at 10:24 UTC; its hours are as warm as they are late.
RemoteReading forecast(std::optional<int> utcOffset = 0) {
  RemoteReading reading;
  reading.value.value = u"-4°"_s;
  reading.value.subtitle = u"Clear"_s;
  reading.value.symbol = u"sun.max.fill"_s;
  reading.value.updated = QDateTime(QDate(2026, 11, 24), QTime(10, 24), QTimeZone::utc());
  reading.goodAt = reading.value.updated;
  WeatherSnapshot& weather = reading.value.weather.emplace();
  weather.city = u"Kendal"_s;
  weather.utcOffset = utcOffset;
  weather.sunrise = u"07:52"_s;
  weather.sunset = u"15:54"_s;
  weather.highs = {8, 5, 7};
  weather.lows = {2, -3, 1};
  weather.codes = {2, 61, 3};
  weather.days = {u"2026-11-24"_s, u"2026-11-25"_s, u"2026-11-26"_s};
  for (int hour = 0; hour < 72; ++hour)
    weather.hourly.append({u"%1:00"_s.arg(hour % 24, 2, 10, QChar(u'0')), 1.0 * hour});
  return reading;
}

/// Tuesday morning, in UTC.
TileSources morningInUtc() {
  TileSources sources = morning();
  sources.now = QDateTime(sources.now.date(), sources.now.time(), QTimeZone::utc());
  return sources;
}

TEST(WeatherFacts, BeginWithTheHourAndTheDayOfThePlace) {
  constexpr int hour = 3600;
  const struct {
    int offset;
    int later;  ///< Seconds after 10:24:36 UTC.
    double first;
    QString days;
    bool isNight;
  } cases[] = {
      {0, 0, 10, u"Today Wed Thu"_s, false},       {0, 14 * hour, 24, u"Today Thu"_s, true},
      {0, 9 * 24 * hour, -1, u""_s, false},        {13 * hour, 0, 23, u"Today Wed Thu"_s, true},
      {-11 * hour, 0, 23, u"Tue Wed Thu"_s, true},
  };
  for (const auto& [offset, later, first, days, isNight] : cases) {
    SCOPED_TRACE(offset + later);
    TileSources sources = morningInUtc();
    sources.now = sources.now.addSecs(later);
    const RemoteReading reading = forecast(offset);
    const WeatherFacts facts = WeatherFacts::of(reading.value, sources);
    EXPECT_EQ(facts.hours.isEmpty() ? -1 : facts.hours.first().degrees, first);
    QStringList names;
    for (const WeatherFacts::Day& day : facts.days) names << day.name;
    EXPECT_EQ(names.join(u' '), days);
    sources.weather.setExample(reading);
    EXPECT_EQ(WeatherReading::of(widget(kind::weatherWind), sources)->isNight, isNight);
  }
  // An hour that is missing moves none of the others.
  RemoteReading torn = forecast();
  torn.value.weather->hourly.removeAt(3);
  EXPECT_EQ(WeatherFacts::of(torn.value, morningInUtc()).hours.first().degrees, 10);
}

TEST(WeatherTiles, SayHowTheirValueStands) {
  const struct {
    const char* name;
    QMap<QString, QString> options;
    std::function<void(RemoteReading&)> change;  ///< Without one there is no reading.
    QString said;
  } cases[] = {
      {"without a place", {}, {}, u"Set place"_s},
      {"the answer of a place that was taken away", {}, [](RemoteReading&) {}, u"Set place"_s},
      {"before the first answer", {{option::city, u"Kendal"_s}}, {}, u"Updating…"_s},
      {"a first fetch that failed",
       {{option::city, u"Kendal"_s}},
       [](RemoteReading& reading) {
         reading.value = {};
         reading.value.failed = true;
         reading.value.subtitle = u"City not found."_s;
       },
       u"City not found."_s},
      {"all well", {{option::city, u"Kendal"_s}}, [](RemoteReading&) {}, u"Kendal, −4°, Clear"_s},
      {"a value of this morning",
       {{option::city, u"Kendal"_s}},
       [](RemoteReading& reading) { reading.goodAt = reading.goodAt->addSecs(-3 * 3600); },
       u"Kendal, −4°, Clear, 3 h ago"_s},
      {"a failure keeps the headline",
       {{option::city, u"Kendal"_s}},
       [](RemoteReading& reading) {
         reading.value.failed = true;
         reading.value.subtitle = u"No answer came."_s;
         reading.value.weather.reset();
         reading.goodAt = reading.goodAt->addSecs(-600);
       },
       u"Kendal, −4°, 10 min ago, No answer came."_s},
      {"a pause",
       {{option::city, u"Kendal"_s}},
       [](RemoteReading& reading) { reading.pausedUntil = reading.goodAt->addSecs(3600); },
       u"Kendal, −4°, Clear, Paused until 11:24."_s},
      {"a fetch after a failure, whose sentence stays",
       {{option::city, u"Kendal"_s}},
       [](RemoteReading& reading) {
         reading.value.failed = reading.isLoading = true;
         reading.value.subtitle = u"No answer came."_s;
       },
       u"Kendal, −4°, No answer came."_s},
      {"nobody is asked",
       {{option::city, u"Kendal"_s}},
       [](RemoteReading& reading) {
         reading.waitsFor = RemoteWait::Network;
         reading.goodAt = reading.goodAt->addSecs(-120);
       },
       u"Kendal, −4°, Clear, 2 min ago, Waiting for the network."_s},
  };
  for (const auto& each : cases) {
    TileSources sources = morning();
    sources.weather = {};
    DockWidget shown = widget(kind::weatherCurrent);
    shown.options = each.options;
    if (each.change) {
      RemoteReading reading = forecast();
      reading.goodAt = QDateTime(reading.goodAt->date(), reading.goodAt->time());  // As told here, in local time.
      each.change(reading);
      sources.weather.set(shown.id, reading);
    }
    const TileContent content = makeTileContent(shown, Catalog::find(shown.kind), sources);
    EXPECT_EQ(content.describe(u"Location"_s).value, each.said) << each.name;
  }
}

TEST(WeatherTiles, AClockSaysWhyItNeverHadAnyWeather) {
  RemoteReading failed;
  failed.value.failed = true;
  failed.value.subtitle = u"City not found."_s;
  RemoteReading waiting;
  waiting.waitsFor = RemoteWait::Network;
  for (const auto& [reading, said] :
       {std::pair(failed, u"Kendal: City not found."_s), std::pair(waiting, u"Kendal: Waiting for the network."_s)}) {
    TileSources sources = morning();
    sources.weather = {};
    DockWidget clock = widget(kind::todayClock);
    clock.options.insert(option::city, u"Kendal"_s);
    sources.weather.set(clock.id, reading);
    const TileContent content = makeTileContent(clock, Catalog::find(clock.kind), sources);
    EXPECT_TRUE(content.describe({}).value.endsWith(u", "_s + said)) << qPrintable(content.describe({}).value);
    EXPECT_EQ(contentAs<TodayClockContent>(content).hasFailed, reading.value.failed);
  }
}

TEST(WeatherTiles, AClockSaysHowItsWeatherStands) {
  const struct {
    const char* name;
    std::function<void(RemoteReading&)> change;
    QString said;
    bool hasFailed, isLoading;
  } cases[] = {
      {"all well", [](RemoteReading&) {}, u"Kendal −4°"_s, false, false},
      {"asked again", [](RemoteReading& reading) { reading.isLoading = true; }, u"Kendal −4°"_s, false, true},
      {"stale",
       [](RemoteReading& reading) {
         reading.waitsFor = RemoteWait::Network;
         reading.goodAt = reading.goodAt->addSecs(-120);
       },
       u"Kendal −4°, 2 min ago, Waiting for the network."_s, false, false},
      {"failed",
       [](RemoteReading& reading) {
         reading.value.failed = true;
         reading.value.subtitle = u"No answer came."_s;
       },
       u"Kendal −4°, No answer came."_s, true, false},
  };
  for (const auto& each : cases) {
    TileSources sources = morning();
    sources.weather = {};
    DockWidget clock = widget(kind::todayClock);
    clock.options.insert(option::city, u"Kendal"_s);
    RemoteReading reading = forecast();
    reading.goodAt = QDateTime(reading.goodAt->date(), reading.goodAt->time());
    each.change(reading);
    sources.weather.set(clock.id, reading);
    const TileContent content = makeTileContent(clock, Catalog::find(clock.kind), sources);
    EXPECT_TRUE(content.describe({}).value.endsWith(u", "_s + each.said))
        << each.name << ": " << qPrintable(content.describe({}).value);
    EXPECT_EQ(contentAs<TodayClockContent>(content).hasFailed, each.hasFailed) << each.name;
    EXPECT_EQ(content.isLoading(), each.isLoading) << each.name;
  }
}

/// What a forecast may hold, from the usual to the hardest to lay out.
QList<RemoteReading> forecasts() {
  const auto changed = [](const std::function<void(RemoteReading&, WeatherSnapshot&)>& change) {
    RemoteReading reading = forecast();
    WeatherSnapshot& weather = *reading.value.weather;
    weather.wind = 14;
    weather.windDirection = 225;
    weather.windGusts = 26;
    weather.humidity = 72;
    weather.highs << 9 << -1;
    weather.lows << 1 << -3;
    weather.codes << 71 << 95;
    weather.days << u"2026-11-27"_s << u"2026-11-28"_s;
    for (auto& [hour, degrees] : weather.hourly) degrees = 8 - std::abs(static_cast<int>(degrees) % 24 - 14) / 2;
    change(reading, weather);
    return reading;
  };
  return {
      changed([](RemoteReading& reading, WeatherSnapshot&) {
        reading.value.value = u"6°"_s;
        reading.value.subtitle = u"Rain showers"_s;
        reading.value.symbol = u"cloud.rain.fill"_s;
      }),
      changed([](RemoteReading& reading, WeatherSnapshot& weather) {
        reading.value.value = u"-40°"_s;
        reading.value.subtitle = u"Thunderstorm with hail"_s;
        reading.value.symbol = u"cloud.bolt.rain.fill"_s;
        reading.isLoading = true;
        weather.city = u"Llanfairpwllgwyngyllgogerychwyrndrobwllllantysiliogogogoch"_s;
        weather.highs.fill(-38);
        weather.lows.fill(-44);
        for (auto& [hour, degrees] : weather.hourly) degrees -= 45;
        weather.utcOffset = 12 * 3600;
      }),
      changed([](RemoteReading& reading, WeatherSnapshot& weather) {
        reading.value.value = u"128°"_s;
        reading.value.subtitle = u"Freezing drizzle"_s;
        reading.value.symbol = u"cloud.drizzle.fill"_s;
        reading.goodAt = reading.goodAt->addSecs(-90 * 60);
        weather.highs.fill(131);
        weather.lows.fill(104);
        weather.wind = 214;
        weather.windGusts = 308;
        weather.humidity = 100;
        for (auto& [hour, degrees] : weather.hourly) degrees += 110;
      }),
      changed([](RemoteReading& reading, WeatherSnapshot& weather) {
        reading.value.subtitle = u"Fog"_s;
        reading.value.symbol = u"cloud.fog.fill"_s;
        weather = {};
        weather.city = u"Kendal"_s;
      }),
      changed([](RemoteReading& reading, WeatherSnapshot&) {
        reading.value.failed = true;
        reading.value.subtitle = u"No answer came."_s;
        reading.value.symbol = u"cloud.snow.fill"_s;
        reading.value.weather.reset();
        reading.goodAt = reading.goodAt->addSecs(-600);
      }),
  };
}

TEST(WeatherTiles, KeepWithinTheirTileWhateverTheyShow) {
  struct Look {
    QString name;
    DockStyle style;
    bool monochrome;
    double scale;
    Qt::LayoutDirection direction;
  };
  constexpr double ratio = 2;
  for (const Look& look : {Look{u"dark"_s, DockStyle::DarkGlass, false, 1, Qt::LeftToRight},
                           Look{u"light"_s, DockStyle::White, false, 1, Qt::LeftToRight},
                           Look{u"mono"_s, DockStyle::DarkGlass, true, 1, Qt::LeftToRight},
                           Look{u"reverse"_s, DockStyle::DarkGlass, false, 1, Qt::RightToLeft},
                           Look{u"compact"_s, DockStyle::DarkGlass, false, 0.7, Qt::LeftToRight},
                           Look{u"bare"_s, DockStyle::DarkGlass, false, 0.5, Qt::LeftToRight}}) {
    TileStyle style;
    style.palette = Palette::make(look.style, Backdrop::Opaque, look.monochrome);
    style.scale = look.scale;
    style.direction = look.direction;
    style.accent = Accent::Blue;
    QImage sheet(QSize(1480, 410) * ratio * look.scale, QImage::Format_ARGB32_Premultiplied);
    sheet.setDevicePixelRatio(ratio);
    sheet.fill(style.palette.panel.bodyTop);
    QPainter painter(&sheet);
    double y = 10;
    for (const RemoteReading& reading : forecasts()) {
      double x = 10;
      for (const WidgetDefinition& kind : Catalog::items()) {
        if (kind.family != familyText(Family::Weather)) continue;
        TileSources sources = morning();
        sources.weather = {};
        DockWidget shown = widget(kind.id);
        shown.options = {{option::city, u"Kendal"_s}};
        sources.weather.set(shown.id, reading);
        const TileContent content = makeTileContent(shown, kind, sources);
        const QSizeF size(kind.width * look.scale, 64 * look.scale);
        style.grounded = true;
        paintTile(painter, QRectF(QPointF(x, y) * look.scale, size), content, style);
        x += kind.width + 10;
        QImage alone(((size + QSizeF(80, 0)) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        alone.setDevicePixelRatio(ratio);
        alone.fill(Qt::transparent);
        QPainter bare(&alone);
        style.grounded = false;
        paintTile(bare, QRectF(QPointF(40, 0), size), content, style);
        bare.end();
        const int left = static_cast<int>((40 + 2 * look.scale) * ratio);
        const int right = static_cast<int>((40 + size.width() - 2 * look.scale) * ratio);
        qsizetype outside = 0;
        for (int row = 0; row < alone.height(); ++row)
          for (int column = 0; column < alone.width(); ++column)
            if ((column < left || column > right) && qAlpha(alone.pixel(column, row)) > 40) ++outside;
        EXPECT_EQ(outside, 0) << qPrintable(kind.id) << ' ' << qPrintable(look.name) << ' '
                              << qPrintable(*reading.value.value);
      }
      y += 80;
    }
    painter.end();
    keep(sheet, u"weather-"_s + look.name);
  }
}

}  // namespace
}  // namespace tarnwick::testing
