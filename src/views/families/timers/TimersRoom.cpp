#include "views/families/timers/TimersRoom.h"

#include <array>

#include "views/families/timers/TimerTiles.h"
#include "views/panels/Room.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

using enum FieldShape;

constexpr WidgetOption minutes(const char* label) {
  return {.key = option::minutes,
          .shape = Number,
          .label = label,
          .placeholder = "25",
          .help = QT_TRANSLATE_NOOP("Library", "In minutes. Changing the duration restarts the timer."),
          .fault = QT_TRANSLATE_NOOP("WidgetEditor", "Enter a duration between 0 and 1440 minutes.")};
}

constexpr WidgetOption kAutoContinue{.key = option::autoContinue,
                                     .shape = Switch,
                                     .label = QT_TRANSLATE_NOOP("Library", "Continue automatically"),
                                     .help = QT_TRANSLATE_NOOP("Library", "The next phase starts when one ends."),
                                     .value = value::on.data()};

constexpr std::array kTimerOptions = {minutes(QT_TRANSLATE_NOOP("Library", "Duration"))};
constexpr std::array kPomodoroOptions = {
    minutes(QT_TRANSLATE_NOOP("Library", "Focus")),
    WidgetOption{.key = option::shortBreak,
                 .shape = Steps,
                 .label = QT_TRANSLATE_NOOP("Library", "Short break"),
                 .words = QT_TRANSLATE_NOOP("Library", "%1 min"),
                 .usual = 5,
                 .least = 1,
                 .most = 240},
    WidgetOption{.key = option::longBreak,
                 .shape = Steps,
                 .label = QT_TRANSLATE_NOOP("Library", "Long break"),
                 .words = QT_TRANSLATE_NOOP("Library", "%1 min"),
                 .usual = 15,
                 .least = 1,
                 .most = 240},
    WidgetOption{.key = option::cycleLength,
                 .shape = Steps,
                 .label = QT_TRANSLATE_NOOP("Library", "Sessions before a long break"),
                 .usual = 4,
                 .least = 1,
                 .most = 12},
    kAutoContinue,
};
constexpr std::array kPostureOptions = {
    minutes(QT_TRANSLATE_NOOP("Library", "Seated")),
    WidgetOption{.key = option::standingMinutes,
                 .shape = Steps,
                 .label = QT_TRANSLATE_NOOP("Library", "Standing"),
                 .words = QT_TRANSLATE_NOOP("Library", "%1 min"),
                 .usual = 0,
                 .least = 0,
                 .most = 240},
    kAutoContinue,
};

void startOrStop(const PartClick& click) { click.store.toggleTimer(click.widget.id); }

/// A moment as timers keep it.
QString secondsFrom(const QDateTime& now, int seconds) {
  return QString::number(now.addSecs(seconds).toSecsSinceEpoch());
}
QMap<QString, QString> picturedPomodoro(const QDateTime& now) {
  return {{option::sessions, u"2"_s}, {option::phase, value::work}, {option::deadline, secondsFrom(now, 9 * 60 + 41)}};
}
QMap<QString, QString> picturedTimer(const QDateTime&) { return {{option::remaining, u"1125"_s}}; }
QMap<QString, QString> picturedStopwatch(const QDateTime& now) {
  return {{option::started, secondsFrom(now, -192)}, {option::laps, u"64.2,131.7"_s}};
}
QMap<QString, QString> picturedPosture(const QDateTime& now) {
  return {{option::minutes, u"45"_s},
          {option::standingMinutes, u"15"_s},
          {option::phase, value::seated},
          {option::deadline, secondsFrom(now, 24 * 60 + 10)}};
}

constexpr std::array kFamilies = {
    RoomRow{.of = familyText(Family::Timer),
            .content = contentOf<makeTimer>,
            .panel = makeCountdownPanel,
            .accent = always<Accent::Orange>,
            .options = kTimerOptions,
            .act = startOrStop},
};
constexpr std::array kKinds = {
    RoomRow{.of = kind::timer, .pictured = picturedTimer},
    RoomRow{.of = kind::pomodoro,
            .panel = makePomodoroPanel,
            .accent = always<Accent::Red>,
            .options = kPomodoroOptions,
            .pictured = picturedPomodoro},
    // A stopwatch has no duration.
    RoomRow{.of = kind::stopwatch,
            .panel = makeStopwatchPanel,
            .options = std::span<const WidgetOption>(),
            .pictured = picturedStopwatch},
    RoomRow{.of = kind::posture,
            .panel = makePosturePanel,
            .accent = always<Accent::Teal>,
            .options = kPostureOptions,
            .pictured = picturedPosture},
};

}  // namespace

extern const Room kTimersRoom;
constinit const Room kTimersRoom{.name = "timers"_L1, .families = kFamilies, .kinds = kKinds};

}  // namespace tarnwick
