#include <optional>

#include "views/families/weather/WeatherLooks.h"
#include "views/families/weather/WeatherRoom.h"
#include "views/tiles/GenericTile.h"
#include "views/tiles/RemoteState.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/ClockWords.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kBarePicture = 32;
constexpr double kNameBaseline = 44;
constexpr double kWordBaseline = 56.5;

/// A place that is not chosen, or whose weather was never read.
struct PlacelessContent {
  GenericContent generic;

  bool operator==(const PlacelessContent&) const = default;
};

}  // namespace

void paint(TileCanvas& canvas, const WeatherContent& content) {
  content.look->has(content) ? content.look->paint(canvas, content) : paintTemperature(canvas, content);
  if (content.reading.isLoading) paintLoading(canvas);
  // A narrow tile has its figure where the dot would be; there the grey and the caption say it.
  if (content.reading.isFailed && content.look != &weatherLook::current) paintFailure(canvas);
}

TileText describe(const WeatherContent& content, const QString& name) {
  const WeatherReading& reading = content.reading;
  QStringList parts{reading.place};
  parts += content.look->has(content) ? content.look->words(content) : temperatureWords(content);
  parts << reading.age << reading.problem;
  parts.removeAll(QString());
  return {name, parts.join(u", "_s)};
}

namespace {

TileText describe(const PlacelessContent& content, const QString& name) { return describe(content.generic, name); }

/// A narrow tile has its picture above, where that of its kind is.
void paintNarrow(TileCanvas& canvas, const GenericContent& missing) {
  using namespace theme;
  const bool words = canvas.showsCaption();
  // Without words the picture has the whole tile to itself.
  const QPointF topLeft = words ? QPointF(kPictureInset, 1.5) : QPointF((canvas.width() - kBarePicture) / 2, 15);
  drawWeather(canvas.painter(), missing.picture.value_or(WeatherPicture::CloudSun), topLeft, words ? 28 : kBarePicture,
              canvas.colors());
  if (!words) return;
  const double space = canvas.spaceAfter(kTextLeft);
  const double nameBaseline = canvas.showsLastRow() ? kNameBaseline : kCaptionBaseline;
  canvas.text(kTextLeft, nameBaseline, space, TextStyle::TabLabel, missing.name, canvas.colors().primary);
  if (canvas.showsLastRow())
    canvas.text(kTextLeft, kWordBaseline, space, TextStyle::Caption, missing.word,
                missing.opensEditor ? canvas.accentWord() : canvas.colors().secondary);
}

void paint(TileCanvas& canvas, const PlacelessContent& content) { paintNarrow(canvas, content.generic); }

/// What it shows without a temperature: the way to a place, or that the place waits for its first answer.
GenericContent withoutReading(const TileRequest& request, WeatherPicture picture) {
  GenericContent content = makeGeneric(request);
  content.picture = picture;
  const QString place = WeatherReading::placeOf(request.widget);
  content.opensEditor = place.isEmpty();
  if (place.isEmpty()) {
    content.word = TileWords::tr("Set place");
    return content;
  }
  const std::optional<RemoteReading> reading = request.sources.weather.of(request.widget.id);
  content.name = place;
  const RemoteState state = reading ? RemoteState::of(*reading, request.sources) : RemoteState();
  content.sentence = state.problem;
  content.word = state.problem.isEmpty() ? TileWords::tr("Updating…")
                 : state.isWaiting       ? TileWords::tr("Waiting")
                                         : TileWords::tr("No answer");
  return content;
}

TileContent make(const TileRequest& request, const WeatherLook& look, WeatherPicture picture) {
  const TileSources& sources = request.sources;
  // A place that was taken away leaves its last answer behind.
  const bool isPlaced = !WeatherReading::placeOf(request.widget).isEmpty() || sources.weather.example();
  const auto reading = isPlaced ? WeatherReading::of(request.widget, sources) : std::nullopt;
  if (!reading) {
    GenericContent missing = withoutReading(request, picture);
    return &look == &weatherLook::current ? TileContent(PlacelessContent{std::move(missing)})
                                          : TileContent(std::move(missing));
  }
  WeatherContent content{&look, *reading, WeatherFacts::of(sources.weather.of(request.widget.id)->value, sources),
                         {},    {},       {}};
  // What a tile does not show must not have it painted anew.
  if (&look != &weatherLook::sun) content.facts.clock = {};
  if (&look != &weatherLook::hourly) content.facts.hours.clear();
  for (const WeatherFacts::Hour& hour : content.facts.hours) content.hourNames << briefHour(hour.hour, sources);
  if (content.facts.sun) {
    content.rise = ClockWords::time(content.facts.sun->rise, sources.locale, sources.use24Hour).full();
    content.set = ClockWords::time(content.facts.sun->set, sources.locale, sources.use24Hour).full();
  }
  return content;
}

}  // namespace

TileContent makeCurrentWeather(const TileRequest& request) {
  return make(request, weatherLook::current, WeatherPicture::CloudSun);
}
TileContent makeWeatherDetails(const TileRequest& request) {
  return make(request, weatherLook::details, WeatherPicture::CloudSun);
}
TileContent makeWeatherStatus(const TileRequest& request) {
  return make(request, weatherLook::condition, WeatherPicture::Cloud);
}
TileContent makeForecast(const TileRequest& request) {
  return make(request, weatherLook::forecast, WeatherPicture::CloudSun);
}
TileContent makeTodayForecast(const TileRequest& request) {
  return make(request, weatherLook::today, WeatherPicture::CloudSun);
}
TileContent makeHourlyWeather(const TileRequest& request) {
  return make(request, weatherLook::hourly, WeatherPicture::CloudSun);
}
TileContent makeWind(const TileRequest& request) { return make(request, weatherLook::wind, WeatherPicture::Cloud); }
TileContent makeSunCycle(const TileRequest& request) { return make(request, weatherLook::sun, WeatherPicture::Sun); }

}  // namespace tarnwick
