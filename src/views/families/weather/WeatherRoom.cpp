#include "views/families/weather/WeatherRoom.h"

#include <array>

#include "views/panels/PanelWords.h"
#include "views/panels/PlainPanel.h"
#include "views/panels/Room.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr const char* kNoWeather = QT_TRANSLATE_NOOP("Library", "Weather is not part of this version yet.");

constexpr std::array kOptions = {
    WidgetOption{.key = option::city,
                 .shape = FieldShape::Line,
                 .label = QT_TRANSLATE_NOOP("Library", "Place"),
                 .placeholder = QT_TRANSLATE_NOOP("Library", "Chicago"),
                 .help = kNoWeather,
                 .isLater = true},
    WidgetOption{.key = option::weatherLocation,
                 .shape = FieldShape::Switch,
                 .label = QT_TRANSLATE_NOOP("Library", "Current location"),
                 .help = kNoWeather,
                 .value = "current",
                 .isLater = true},
};

PlainWords words(const TilePanel&, const TileSources&) {
  return {PanelWords::tr("Choose a place to see its weather here."), PanelWords::tr("Choose Place…"), true};
}

std::unique_ptr<TilePanel> makePlacelessPanel(const PanelContext& context) { return makePlainPanel(context, words); }

template <WeatherPicture Picture>
TileContent placelessWith(const TileRequest& request) {
  return makePlacelessWeather(request, Picture);
}

void sample(TileSources& sources, const TileSources& samples) { sources.weather.setExample(samples.weather.example()); }

void picture(TileSources& sources) {
  RemoteReading reading;
  reading.value.value = u"6°"_s;
  reading.value.subtitle = u"Partly cloudy"_s;
  reading.value.symbol = u"cloud.sun.fill"_s;
  reading.value.weather.emplace().city = u"Kendal"_s;
  sources.weather.setExample(reading);
}

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Weather),
            .content = placelessWith<WeatherPicture::CloudSun>,
            .panel = makePlacelessPanel,
            .options = kOptions,
            .comesLater = true,
            .sample = sample},
};
constexpr std::array kKinds = {
    RoomRow{.of = kind::weatherCurrent, .content = makeCurrentWeather},
    RoomRow{.of = kind::weatherCondition, .content = placelessWith<WeatherPicture::Cloud>},
    RoomRow{.of = kind::weatherWind, .content = placelessWith<WeatherPicture::Cloud>},
    RoomRow{.of = kind::weatherSunCycle, .content = placelessWith<WeatherPicture::Sun>},
};

}  // namespace

extern const Room kWeatherRoom;
constinit const Room kWeatherRoom{.name = "weather"_L1, .families = kFamilies, .kinds = kKinds, .picture = picture};

}  // namespace tarnwick
