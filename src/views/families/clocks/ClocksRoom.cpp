#include <array>

#include "views/families/clocks/ClockPanel.h"
#include "views/families/clocks/ClockTiles.h"
#include "views/families/clocks/DateTiles.h"
#include "views/families/clocks/DigitTiles.h"
#include "views/panels/Room.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

using enum FieldShape;

constexpr std::array kOptions = {
    WidgetOption{.key = "timezone", .shape = Zone, .label = QT_TRANSLATE_NOOP("Library", "Time zone")},
    WidgetOption{.key = "zoneLabel",
                 .shape = Line,
                 .label = QT_TRANSLATE_NOOP("Library", "Label"),
                 .placeholder = QT_TRANSLATE_NOOP("Library", "Local")},
};
constexpr std::array kTodayOptions = {
    kOptions[0],
    kOptions[1],
    WidgetOption{.key = "city",
                 .shape = Line,
                 .label = QT_TRANSLATE_NOOP("Library", "City"),
                 .placeholder = QT_TRANSLATE_NOOP("Library", "Chicago"),
                 .help = QT_TRANSLATE_NOOP("Library", "Weather is not part of this version yet."),
                 .isLater = true},
};
constexpr std::array kListOptions = {
    WidgetOption{.key = "zones",
                 .shape = Zones,
                 .label = QT_TRANSLATE_NOOP("Library", "Time zones"),
                 .placeholder = "America/New_York,Europe/London,Asia/Tokyo"},
};

QMap<QString, QString> tokyo() { return {{u"timezone"_s, u"Asia/Tokyo"_s}}; }
QMap<QString, QString> exampleCity(const ExampleRequest&) { return tokyo(); }
QMap<QString, QString> picturedCity(const QDateTime&) { return tokyo(); }
QMap<QString, QString> picturedList(const QDateTime&) {
  return {{u"zones"_s, u"America/New_York,Europe/London,Asia/Tokyo"_s}};
}
QMap<QString, QString> picturedToday(const QDateTime&) { return {{u"city"_s, u"Kendal"_s}}; }

constexpr auto kSecond = always<TickCadence::Second, DockWidget>;

constexpr std::array kFamilies = {
    RoomRow{.word = "clock"_L1,
            .panel = makeClockPanel,
            .accent = always<Accent::Orange>,
            .cadence = always<TickCadence::Minute>,
            .options = kOptions},
};
constexpr std::array kKinds = {
    RoomRow{.word = "digitalClock"_L1, .content = contentOf<makeTimeDate>},
    RoomRow{.word = "analogClassicLight"_L1, .content = contentOf<makeAnalogClock>, .cadence = kSecond},
    RoomRow{.word = "analogClassicDark"_L1, .content = contentOf<makeDarkClock>, .cadence = kSecond},
    RoomRow{.word = "analogMinimal"_L1, .content = contentOf<makeMinimalClock>, .cadence = kSecond},
    RoomRow{.word = "timeOnly"_L1, .content = contentOf<makeTimeOnly>},
    RoomRow{.word = "timeSeconds"_L1, .content = contentOf<makeTimeSeconds>, .cadence = kSecond},
    RoomRow{.word = "flipClock"_L1, .content = contentOf<makeFlipClock>},
    RoomRow{.word = "pixelClock"_L1, .content = contentOf<makePixelClock>},
    RoomRow{.word = "overlapClock"_L1, .content = contentOf<makeOverlapClock>},
    RoomRow{.word = "ringClock"_L1, .content = contentOf<makeRingClock>},
    RoomRow{.word = "worldClockCity"_L1,
            .content = contentOf<makeWorldTime>,
            .example = exampleCity,
            .pictured = picturedCity},
    RoomRow{.word = "worldClockList"_L1,
            .content = contentOf<makeWorldList>,
            .options = kListOptions,
            .pictured = picturedList},
    RoomRow{.word = "dateOnly"_L1, .content = contentOf<makeDate>},
    RoomRow{.word = "dayNumber"_L1, .content = contentOf<makeDayNumber>, .accent = always<Accent::Red>},
    RoomRow{.word = "todayClock"_L1,
            .content = contentOf<makeTodayClock>,
            .options = kTodayOptions,
            .pictured = picturedToday},
};

}  // namespace

extern const Room kClocksRoom;
constinit const Room kClocksRoom{.name = "clocks"_L1, .families = kFamilies, .kinds = kKinds};

}  // namespace tarnwick
