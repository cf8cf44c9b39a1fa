#include <optional>

#include "base/LocalFigures.h"
#include "views/families/weather/WeatherRoom.h"
#include "views/tiles/GenericTile.h"
#include "views/tiles/TileCanvas.h"
#include "views/tiles/WeatherReading.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kPicture = 32;
constexpr double kPictureTop = 4;
constexpr double kFigureLeastRight = 4;
constexpr double kFigureLeft = 48;
constexpr double kPlaceBaseline = 51;
constexpr double kNameBaseline = 44;
constexpr double kWordBaseline = 56.5;

/// The largest in which the whole figure fits on the tile: in hard winters it has three characters.
TextStyle figureStyle(const TileCanvas& canvas, const QString& figure) {
  const double space = canvas.width() - kFigureLeft - kFigureLeastRight;
  for (const TextStyle style : {TextStyle::Headline, TextStyle::Figure17})
    if (canvas.line(figure, style).width() <= space) return style;
  return TextStyle::Title;
}

void paintReading(TileCanvas& canvas, const WeatherReading& reading) {
  const double lower = canvas.showsCaption() ? 0 : 12;
  drawWeather(canvas.painter(), reading.picture, {theme::kPictureInset, kPictureTop + lower}, kPicture,
              canvas.colors().pictures);
  double baseline = theme::kHeadlineBaseline;
  const TextStyle style = figureStyle(canvas, reading.temperature);
  if (!canvas.showsCaption()) baseline = TileCanvas::centredBaseline(canvas.line(reading.temperature, style));
  canvas.figure(kFigureLeft, baseline, style, reading.temperature);
  if (canvas.showsCaption())
    canvas.text(theme::kTextLeft, kPlaceBaseline, canvas.spaceAfter(theme::kTextLeft), TextStyle::Caption,
                reading.place, canvas.colors().secondary);
}

void paintUnconnected(TileCanvas& canvas, const GenericContent& missing) {
  using namespace theme;
  const bool words = canvas.showsCaption();
  // Without words the picture has the whole tile to itself.
  const QPointF topLeft = words ? QPointF(kPictureInset, 1.5) : QPointF((canvas.width() - kPicture) / 2, 15);
  drawWeather(canvas.painter(), WeatherPicture::CloudSun, topLeft, words ? 28 : kPicture, canvas.colors().pictures);
  if (!words) return;
  const double space = canvas.spaceAfter(kTextLeft);
  const double nameBaseline = canvas.showsLastRow() ? kNameBaseline : kCaptionBaseline;
  canvas.text(kTextLeft, nameBaseline, space, TextStyle::TabLabel, missing.name, canvas.colors().primary);
  if (canvas.showsLastRow())
    canvas.text(kTextLeft, kWordBaseline, space, TextStyle::Caption, missing.word,
                missing.opensEditor ? canvas.accentWord() : canvas.colors().secondary);
}

struct CurrentWeatherContent {
  std::optional<WeatherReading> reading;
  GenericContent missing;  ///< What it shows without a reading.

  bool operator==(const CurrentWeatherContent&) const = default;
};

TileText describe(const CurrentWeatherContent& content, const QString& name) {
  if (!content.reading) return describe(content.missing, name);
  QStringList parts{content.reading->place, content.reading->temperature, content.reading->condition};
  parts.removeAll(QString());
  return {name, parts.join(u", "_s)};
}

void paint(TileCanvas& canvas, const CurrentWeatherContent& content) {
  content.reading ? paintReading(canvas, *content.reading) : paintUnconnected(canvas, content.missing);
}

GenericContent placeless(const TileRequest& request) {
  GenericContent content = makeGeneric(request);
  if (request.comesLater) return content;
  content.word = TileWords::tr("Set place");
  content.opensEditor = true;
  return content;
}

}  // namespace

TileContent makeCurrentWeather(const TileRequest& request) {
  CurrentWeatherContent content{WeatherReading::of(request.sources.weather.of(request.widget.id)), placeless(request)};
  if (content.reading)
    content.reading->temperature = LocalFigures::of(content.reading->temperature, request.sources.locale);
  return content;
}

TileContent makePlacelessWeather(const TileRequest& request, WeatherPicture picture) {
  GenericContent content = placeless(request);
  content.picture = picture;
  return content;
}

}  // namespace tarnwick
