#include "views/families/clocks/ClocksRoom.h"

#include <array>

#include "views/families/clocks/ClockTiles.h"
#include "views/families/clocks/DateTiles.h"
#include "views/families/clocks/DigitTiles.h"
#include "views/panels/Room.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

using enum FieldShape;

constexpr std::array kOptions = {
    WidgetOption{.key = option::timezone, .shape = Zone, .label = QT_TRANSLATE_NOOP("Library", "Time zone")},
    WidgetOption{.key = option::zoneLabel,
                 .shape = Line,
                 .label = QT_TRANSLATE_NOOP("Library", "Label"),
                 .placeholder = QT_TRANSLATE_NOOP("Library", "Local")},
};
constexpr std::array kTodayOptions = {
    kOptions[0],
    kOptions[1],
    WidgetOption{.key = option::city,
                 .shape = Place,
                 .label = QT_TRANSLATE_NOOP("Library", "City"),
                 .placeholder = QT_TRANSLATE_NOOP("Library", "Chicago"),
                 .help = QT_TRANSLATE_NOOP("Library", "Shows the weather there beside the time.")},
};
constexpr std::array kListOptions = {
    WidgetOption{.key = option::zones,
                 .shape = Zones,
                 .label = QT_TRANSLATE_NOOP("Library", "Time zones"),
                 .placeholder = "America/New_York,Europe/London,Asia/Tokyo"},
};

QMap<QString, QString> tokyo() { return {{option::timezone, u"Asia/Tokyo"_s}}; }
QMap<QString, QString> exampleCity(const ExampleRequest&) { return tokyo(); }
QMap<QString, QString> picturedCity(const QDateTime&) { return tokyo(); }
QMap<QString, QString> picturedList(const QDateTime&) {
  return {{option::zones, u"America/New_York,Europe/London,Asia/Tokyo"_s}};
}
QMap<QString, QString> picturedToday(const QDateTime&) { return {{option::city, u"Kendal"_s}}; }

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Clock),
            .panel = makeClockPanel,
            .accent = always<Accent::Orange>,
            .options = kOptions},
};
constexpr std::array kKinds = {
    RoomRow{.of = kind::digitalClock, .content = contentOf<makeTimeDate>},
    RoomRow{.of = kind::analogClassicLight, .content = contentOf<makeAnalogClock>},
    RoomRow{.of = kind::analogClassicDark, .content = contentOf<makeDarkClock>},
    RoomRow{.of = kind::analogMinimal, .content = contentOf<makeMinimalClock>},
    RoomRow{.of = kind::timeOnly, .content = contentOf<makeTimeOnly>},
    RoomRow{.of = kind::timeSeconds, .content = contentOf<makeTimeSeconds>},
    RoomRow{.of = kind::flipClock, .content = contentOf<makeFlipClock>},
    RoomRow{.of = kind::pixelClock, .content = contentOf<makePixelClock>},
    RoomRow{.of = kind::overlapClock, .content = contentOf<makeOverlapClock>},
    RoomRow{.of = kind::ringClock, .content = contentOf<makeRingClock>},
    RoomRow{.of = kind::worldClockCity,
            .content = contentOf<makeWorldTime>,
            .example = exampleCity,
            .pictured = picturedCity},
    RoomRow{.of = kind::worldClockList,
            .content = contentOf<makeWorldList>,
            .options = kListOptions,
            .pictured = picturedList},
    RoomRow{.of = kind::dateOnly, .content = contentOf<makeDate>},
    RoomRow{.of = kind::dayNumber, .content = contentOf<makeDayNumber>, .accent = always<Accent::Red>},
    RoomRow{.of = kind::todayClock,
            .content = contentOf<makeTodayClock>,
            .options = kTodayOptions,
            .pictured = picturedToday},
};

}  // namespace

extern const Room kClocksRoom;
constinit const Room kClocksRoom{.name = "clocks"_L1, .families = kFamilies, .kinds = kKinds};

}  // namespace tarnwick
