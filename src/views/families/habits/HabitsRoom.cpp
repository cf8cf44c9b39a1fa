#include "views/families/habits/HabitsRoom.h"

#include <array>

#include "views/families/habits/HabitTiles.h"
#include "views/panels/Room.h"
#include "widgets/HabitMath.h"
#include "widgets/LibraryWords.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

using enum FieldShape;

constexpr std::array kWaterOptions = {
    WidgetOption{.key = option::goal,
                 .shape = Number,
                 .label = QT_TRANSLATE_NOOP("Library", "Daily goal"),
                 .placeholder = "8",
                 .help = QT_TRANSLATE_NOOP("Library", "In glasses."),
                 .fault = QT_TRANSLATE_NOOP("WidgetEditor", "Enter a goal between 1 and 100 glasses.")},
};
constexpr std::array kHabitOptions = {
    WidgetOption{.key = option::text,
                 .shape = Line,
                 .label = QT_TRANSLATE_NOOP("Library", "Habit"),
                 .placeholder = QT_TRANSLATE_NOOP("Library", "Read for 20 minutes")},
};

void drink(const PartClick& click) { click.store.drink(click.widget.id); }
void keep(const PartClick& click) { click.store.toggleHabit(click.widget.id); }

/// A habit that was kept on most of the days before today.
QString someDays(const QDateTime& now) {
  QStringList days;
  for (const int ago : {6, 5, 3, 2, 1}) days.append(HabitMath::key(now.addDays(-ago)));
  return days.join(u',');
}

QMap<QString, QString> exampleWater(const ExampleRequest& request) {
  return {{option::glasses, u"5"_s}, {option::day, HabitMath::key(request.now)}};
}
QMap<QString, QString> exampleHabit(const ExampleRequest& request) {
  return {{option::text, LibraryWords::tr("Read")}, {option::history, someDays(request.now)}};
}
QMap<QString, QString> picturedWater(const QDateTime&) {
  return {{option::glasses, u"5"_s}, {option::goal, u"8"_s}, {option::day, u"2026-11-24"_s}};
}
QMap<QString, QString> picturedHabit(const QDateTime&) {
  return {{option::text, u"Read"_s},
          {option::history,
           u"2026-11-08,2026-11-09,2026-11-10,2026-11-12,2026-11-13,2026-11-14,2026-11-15,2026-11-16,"
           u"2026-11-18,2026-11-19,2026-11-21,2026-11-22,2026-11-23"_s}};
}

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Water),
            .content = contentOf<makeWater>,
            .panel = makeWaterPanel,
            .options = kWaterOptions,
            .act = drink,
            .example = exampleWater,
            .pictured = picturedWater},
    RoomRow{.of = familyText(Family::Habit),
            .content = contentOf<makeHabit>,
            .panel = makeHabitPanel,
            .accent = always<Accent::Green>,
            .options = kHabitOptions,
            .act = keep,
            .example = exampleHabit,
            .pictured = picturedHabit},
};

}  // namespace

extern const Room kHabitsRoom;
constinit const Room kHabitsRoom{.name = "habits"_L1, .families = kFamilies};

}  // namespace tarnwick
