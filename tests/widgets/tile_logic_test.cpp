#include <gtest/gtest.h>

#include <QJsonObject>
#include <QTimeZone>
#include <ctime>

#include "base/DomainError.h"
#include "config/DockConfiguration.h"
#include "widgets/CalendarStrip.h"
#include "widgets/FigureWords.h"
#include "widgets/HabitMath.h"
#include "widgets/PhaseMath.h"
#include "widgets/QuickNotes.h"
#include "widgets/Ticking.h"
#include "widgets/TimeMath.h"
#include "widgets/TimerActions.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QDateTime kNow(QDate(2026, 11, 24), QTime(10, 24), QTimeZone::utc());
const double kUnix = 1'795'515'840;

DockWidget widgetOf(const QString& kind, const QMap<QString, QString>& options = {}) {
  DockWidget widget;
  widget.id = QUuid::createUuid();
  widget.kind = kind;
  widget.options = options;
  return widget;
}

QString at(double offset) { return TimeMath::text(kUnix + offset); }

TEST(TimeMath, CountsDownUpAndPrints) {
  ASSERT_EQ(TimeMath::unixSeconds(kNow), kUnix);
  struct Case {
    QString kind;
    QMap<QString, QString> options;
    double remaining;
  };
  const Case cases[] = {
      {u"timer"_s, {}, 1500},
      {u"timer"_s, {{u"minutes"_s, u"0.5"_s}}, 30},
      {u"timer"_s, {{u"remaining"_s, u"12.5"_s}}, 12.5},
      {u"timer"_s, {{u"remaining"_s, u"12.5"_s}, {u"deadline"_s, at(90)}}, 90},
      {u"timer"_s, {{u"deadline"_s, at(-5)}}, 0},
      {u"timer"_s, {{u"deadline"_s, u"soon"_s}, {u"remaining"_s, u"7"_s}}, 7},
      {u"pomodoro"_s, {{u"phase"_s, u"shortBreak"_s}}, 300},
      {u"pomodoro"_s, {{u"phase"_s, u"longBreak"_s}, {u"longBreak"_s, u"100000"_s}}, 86400},
      {u"pomodoro"_s, {{u"minutes"_s, u"0"_s}}, 1},
      {u"pomodoro"_s, {{u"phase"_s, u"shortBreak"_s}, {u"shortBreak"_s, u"-5"_s}}, 1},
      {u"timer"_s, {{u"remaining"_s, u"-5"_s}}, 0},
  };
  for (const Case& c : cases) EXPECT_EQ(TimeMath::remaining(widgetOf(c.kind, c.options), kNow), c.remaining);

  EXPECT_EQ(TimeMath::elapsed(widgetOf(u"stopwatch"_s, {{u"elapsed"_s, u"5"_s}, {u"started"_s, at(-10)}}), kNow), 15);
  EXPECT_EQ(TimeMath::elapsed(widgetOf(u"stopwatch"_s, {{u"elapsed"_s, u"5"_s}, {u"started"_s, at(10)}}), kNow), 5);

  const std::pair<double, QString> texts[] = {{-3, u"00:00"_s},     {59.99, u"00:59"_s},       {3599, u"59:59"_s},
                                              {3600, u"1:00:00"_s}, {1e18, u"277777:46:39"_s}, {std::nan(""), u"—"_s}};
  for (const auto& [seconds, text] : texts) EXPECT_EQ(TimeMath::display(seconds), text);
}

TEST(TimeMath, SharesUseRealLengths) {
  using enum TimeMath::Component;
  EXPECT_DOUBLE_EQ(TimeMath::progress(QDateTime(QDate(2026, 11, 24), QTime(12, 0), QTimeZone::utc()), Day), 0.5);
  EXPECT_DOUBLE_EQ(TimeMath::progress(QDateTime(QDate(2026, 2, 15), QTime(0, 0), QTimeZone::utc()), Month), 0.5);
  EXPECT_DOUBLE_EQ(TimeMath::progress(QDateTime(QDate(2026, 1, 1), QTime(0, 0), QTimeZone::utc()), Year), 0);
  // The day on which the clocks go back has 25 hours; at noon 13 of them are over.
  const QTimeZone berlin("Europe/Berlin");
  ASSERT_TRUE(berlin.isValid());
  EXPECT_DOUBLE_EQ(TimeMath::progress(QDateTime(QDate(2026, 10, 25), QTime(12, 0), berlin), Day), 13.0 / 25);
}

TEST(TimeMath, DaysBeginWithTheFirstOfTwoMidnights) {
  struct Case {
    const char* zone;
    QDateTime noon;
    double day;
  };
  const auto noonOf = [](const char* zone, const QDate& day) {
    return QDateTime(day, QTime(12, 0), QTimeZone(QByteArray(zone)));
  };
  const Case cases[] = {
      {"comes twice", noonOf("America/Havana", QDate(2026, 11, 1)), 13.0 / 25},
      {"comes twice the day before", noonOf("America/Havana", QDate(2026, 10, 31)), 0.5},
      {"comes twice, told in summer time", noonOf("Atlantic/Azores", QDate(2026, 10, 25)), 13.0 / 25},
      {"never comes", noonOf("America/Havana", QDate(2026, 3, 8)), 11.0 / 23},
      {"half an hour", noonOf("Australia/Lord_Howe", QDate(2026, 4, 5)), 12.5 / 24.5},
      {"an offset for ever", QDateTime(QDate(2026, 11, 1), QTime(12, 0), Qt::OffsetFromUTC, -18'000), 0.5},
  };
  for (const Case& c : cases) EXPECT_DOUBLE_EQ(TimeMath::progress(c.noon, TimeMath::Component::Day), c.day) << c.zone;
}

/// What the toolkit says while one is there, and the user's zone.
class MessagesInZone {
 public:
  explicit MessagesInZone(const char* zone) : before_(qgetenv("TZ")) {
    qputenv("TZ", zone);
    ::tzset();
    said.clear();
    handler_ = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) { said << text; });
  }
  ~MessagesInZone() {
    qInstallMessageHandler(handler_);
    before_.isNull() ? void(qunsetenv("TZ")) : void(qputenv("TZ", before_));
    ::tzset();
  }
  Q_DISABLE_COPY_MOVE(MessagesInZone)

  static inline QStringList said;

 private:
  QByteArray before_;
  QtMessageHandler handler_;
};

TEST(TimeMath, SaysNothingOnStandardErrorInAnyZone) {
  for (const char* zone : {"UTC", "Europe/Berlin", "America/Havana", "Asia/Kathmandu"}) {
    const MessagesInZone messages(zone);
    const QDateTime noon(QDate(2026, 11, 1), QTime(12, 0));
    for (const auto component : {TimeMath::Component::Day, TimeMath::Component::Month, TimeMath::Component::Year}) {
      const double here = TimeMath::progress(noon, component);
      EXPECT_DOUBLE_EQ(here, TimeMath::progress(QDateTime(noon.date(), noon.time(), QTimeZone(zone)), component))
          << zone;
    }
    EXPECT_EQ(MessagesInZone::said.join(u'\n').toStdString(), "") << zone;
  }
}

TEST(Phases, FollowEachOther) {
  struct Case {
    const char* name;
    QString kind;
    QMap<QString, QString> options;
    double later;                     // Seconds after the deadline.
    QMap<QString, QString> expected;  // An empty text: absent.
  };
  const QString on = u"true"_s;
  const Case cases[] = {
      {"not over yet", u"pomodoro"_s, {}, -1, {{u"deadline"_s, at(0)}, {u"phase"_s, {}}}},
      {"stops before the break",
       u"pomodoro"_s,
       {},
       5,
       {{u"deadline"_s, {}}, {u"phase"_s, u"shortBreak"_s}, {u"sessions"_s, u"1"_s}, {u"remaining"_s, u"300"_s}}},
      {"the fourth session",
       u"pomodoro"_s,
       {{u"sessions"_s, u"3"_s}},
       0,
       {{u"phase"_s, u"longBreak"_s}, {u"sessions"_s, u"4"_s}, {u"remaining"_s, u"900"_s}}},
      {"a cycle of 0 counts as 1", u"pomodoro"_s, {{u"cycleLength"_s, u"0"_s}}, 0, {{u"phase"_s, u"longBreak"_s}}},
      {"a cycle of 99 counts as 12",
       u"pomodoro"_s,
       {{u"cycleLength"_s, u"99"_s}, {u"sessions"_s, u"11"_s}},
       0,
       {{u"phase"_s, u"longBreak"_s}}},
      {"a cycle that is no number", u"pomodoro"_s, {{u"cycleLength"_s, u"nan"_s}}, 5, {{u"deadline"_s, at(0)}}},
      {"counts that are words",
       u"pomodoro"_s,
       {{u"cycleLength"_s, u"few"_s}, {u"sessions"_s, u"some"_s}},
       0,
       {{u"phase"_s, u"shortBreak"_s}, {u"sessions"_s, u"1"_s}, {u"deadline"_s, {}}}},
      {"after a break",
       u"pomodoro"_s,
       {{u"phase"_s, u"longBreak"_s}, {u"sessions"_s, u"4"_s}},
       0,
       {{u"phase"_s, u"work"_s}, {u"sessions"_s, u"4"_s}, {u"remaining"_s, u"1500"_s}}},
      {"goes on",
       u"pomodoro"_s,
       {{u"autoContinue"_s, on}},
       10,
       {{u"deadline"_s, at(300)}, {u"phase"_s, u"shortBreak"_s}}},
      {"catches up",
       u"pomodoro"_s,
       {{u"autoContinue"_s, on}},
       300 + 1500 + 10,
       {{u"deadline"_s, at(300 + 1500 + 300)}, {u"phase"_s, u"shortBreak"_s}, {u"sessions"_s, u"2"_s}}},
      {"catches up to the exact second",
       u"pomodoro"_s,
       {{u"autoContinue"_s, on}},
       300,
       {{u"deadline"_s, at(300 + 1500)}, {u"phase"_s, u"work"_s}, {u"sessions"_s, u"1"_s}}},
      {"a pause below nothing lasts a second",
       u"pomodoro"_s,
       {{u"autoContinue"_s, on}, {u"shortBreak"_s, u"-5"_s}},
       0,
       {{u"deadline"_s, at(1)}, {u"phase"_s, u"shortBreak"_s}, {u"remaining"_s, u"1"_s}}},
      {"sleeps a thousand rounds to the exact second",
       u"pomodoro"_s,
       {{u"autoContinue"_s, on}},
       7'800'000,
       {{u"deadline"_s, at(7'800'300)}, {u"phase"_s, u"shortBreak"_s}, {u"sessions"_s, u"4001"_s}}},
      // Four sessions, three breaks of 5 and one of 15 minutes make a round of 7,800 seconds.
      {"sleeps a thousand rounds",
       u"pomodoro"_s,
       {{u"autoContinue"_s, on}},
       7'800'010,
       {{u"deadline"_s, at(7'800'300)}, {u"phase"_s, u"shortBreak"_s}, {u"sessions"_s, u"4001"_s}}},
      {"stands up",
       u"posture"_s,
       {{u"standingMinutes"_s, u"10"_s}, {u"sessions"_s, u"2"_s}},
       0,
       {{u"phase"_s, u"standing"_s}, {u"remaining"_s, u"600"_s}, {u"deadline"_s, {}}, {u"sessions"_s, u"2"_s}}},
      {"sits down",
       u"posture"_s,
       {{u"standingMinutes"_s, u"10"_s}, {u"phase"_s, u"standing"_s}, {u"autoContinue"_s, on}},
       0,
       {{u"phase"_s, u"seated"_s}, {u"deadline"_s, at(1500)}}},
      {"never stands",
       u"posture"_s,
       {{u"autoContinue"_s, on}},
       0,
       {{u"phase"_s, u"seated"_s}, {u"deadline"_s, at(1500)}}},
  };
  for (const Case& c : cases) {
    DockWidget widget = widgetOf(c.kind, c.options);
    widget.options.insert(u"deadline"_s, at(0));
    const QDateTime moment = kNow.addMSecs(static_cast<qint64>(c.later * 1000));
    const DockWidget after =
        c.kind == "posture"_L1 ? PostureMath::advance(widget, moment) : PomodoroMath::advance(widget, moment);
    for (auto it = c.expected.cbegin(); it != c.expected.cend(); ++it) {
      EXPECT_EQ(after.options.value(it.key()), it.value()) << c.name << ": " << qPrintable(it.key());
    }
  }
}

TEST(TimerActions, StartPauseAndEndOnce) {
  DockWidget timer = TimerActions::toggled(widgetOf(u"timer"_s, {{u"minutes"_s, u"1"_s}}), kNow);
  EXPECT_EQ(timer.options.value(u"deadline"_s), at(60));
  DockWidget paused = TimerActions::toggled(timer, kNow.addSecs(20));
  EXPECT_FALSE(Ticking::timerIsRunning(paused));
  EXPECT_EQ(TimeMath::remaining(paused, kNow.addDays(1)), 40);

  EXPECT_TRUE(TimerActions::beat(timer, kNow.addSecs(59)).announcement.isEmpty());
  const auto ended = TimerActions::beat(timer, kNow.addSecs(61));
  EXPECT_EQ(ended.announcement, u"Your timer is finished."_s);
  EXPECT_TRUE(TimerActions::beat(ended.widget, kNow.addSecs(62)).announcement.isEmpty());
  EXPECT_EQ(TimeMath::remaining(ended.widget, kNow), 0);
  EXPECT_EQ(TimerActions::toggled(ended.widget, kNow).options.value(u"deadline"_s), at(60));
  EXPECT_EQ(TimerActions::reset(ended.widget).options, (QMap<QString, QString>{{u"minutes"_s, u"1"_s}}));

  DockWidget watch = TimerActions::toggled(widgetOf(u"stopwatch"_s), kNow);
  watch = TimerActions::toggled(watch, kNow.addSecs(30));
  watch = TimerActions::toggled(watch, kNow.addSecs(100));
  EXPECT_EQ(TimeMath::elapsed(watch, kNow.addSecs(105)), 35);
  watch.options.insert(u"laps"_s, u"10.0,30.0"_s);
  EXPECT_TRUE(TimerActions::reset(watch).options.isEmpty()) << "laps of another run would come back with the time";

  const std::pair<QString, QString> texts[] = {
      {u"exercise"_s, u"Take a break to move and stretch."_s},
      {u"pomodoro"_s, u"Time for a break."_s},
      {u"posture"_s, u"Relax your shoulders and check your posture."_s},
  };
  for (const auto& [kind, text] : texts) {
    EXPECT_EQ(TimerActions::beat(widgetOf(kind, {{u"deadline"_s, at(0)}}), kNow).announcement, text);
  }
  const QMap<QString, QString> standing{{u"deadline"_s, at(0)}, {u"standingMinutes"_s, u"5"_s}};
  const auto up = TimerActions::beat(widgetOf(u"posture"_s, standing), kNow);
  EXPECT_EQ(up.announcement, u"Time to stand and stretch."_s);
  DockWidget down = up.widget;
  down.options.insert(u"deadline"_s, at(0));
  EXPECT_EQ(TimerActions::beat(down, kNow).announcement, u"Return to a comfortable seated posture."_s);
  EXPECT_EQ(TimerActions::beat(widgetOf(u"pomodoro"_s, {{u"deadline"_s, at(0)}, {u"phase"_s, u"longBreak"_s}}), kNow)
                .announcement,
            u"Ready for your next focus session."_s);
}

TEST(Ticking, IsAsSeldomAsATileCan) {
  using enum TickCadence;
  struct Case {
    QString kind;
    bool running;
    TickCadence expected;
  };
  const Case cases[] = {{u"timeSeconds"_s, false, Second},
                        {u"analogMinimal"_s, false, Second},
                        {u"digitalClock"_s, false, Minute},
                        {u"timer"_s, true, Second},
                        {u"timer"_s, false, Still},
                        {u"exercise"_s, true, Second},
                        {u"worldClockCity"_s, false, Minute},
                        {u"screenshots"_s, false, Minute},
                        {u"recentFiles"_s, false, Still},
                        {u"teleporter"_s, true, Still},
                        {u"nowPlayingMini"_s, false, Second},
                        {u"quickTodo"_s, false, Minute},
                        {u"calendarDayProgress"_s, false, Minute},
                        {u"cpu"_s, true, Still}};
  for (const Case& c : cases) {
    DockWidget ticking{.id = {}, .kind = c.kind, .title = {}, .options = {}};
    if (c.running) ticking.options.insert(u"deadline"_s, u"1"_s);
    EXPECT_EQ(Ticking::cadence(ticking), c.expected) << qPrintable(c.kind);
  }
}

TEST(Habits, StreaksAndGlasses) {
  const DockWidget habit = widgetOf(u"habitTracker"_s, {{u"history"_s, u"2026-11-20,2026-11-22,2026-11-23"_s}});
  EXPECT_EQ(HabitMath::streak(habit, kNow), 2);
  const DockWidget done = HabitMath::toggled(habit, kNow);
  EXPECT_EQ(HabitMath::streak(done, kNow), 3);
  EXPECT_EQ(HabitMath::toggled(done, kNow), habit);
  EXPECT_EQ(HabitMath::streak(habit, kNow.addDays(1)), 0);

  DockWidget water = widgetOf(u"drinkWater"_s, {{u"interval"_s, u"60"_s}});
  water = WaterMath::drunk(WaterMath::drunk(water, kNow), kNow);
  EXPECT_EQ(WaterMath::count(water, kNow), 2);
  EXPECT_EQ(WaterMath::count(water, kNow.addDays(1)), 0);
  EXPECT_EQ(WaterMath::count(WaterMath::drunk(water, kNow, -5), kNow), 0);
  const auto first = TimerActions::beat(water, kNow);
  EXPECT_TRUE(first.announcement.isEmpty());
  EXPECT_TRUE(TimerActions::beat(first.widget, kNow.addSecs(3599)).announcement.isEmpty());
  EXPECT_EQ(TimerActions::beat(first.widget, kNow.addSecs(3600)).announcement,
            u"Take a moment for a glass of water."_s);
}

TEST(Water, CountsAnewAfterTheClockWasSetBack) {
  const DockWidget water = widgetOf(u"drinkWater"_s, {{u"interval"_s, u"60"_s}, {u"lastReminder"_s, at(86'400)}});
  const auto back = TimerActions::beat(water, kNow);
  EXPECT_EQ(back.announcement, QString());
  EXPECT_EQ(back.widget.options.value(u"lastReminder"_s), at(0));
  EXPECT_FALSE(TimerActions::beat(back.widget, kNow.addSecs(3600)).announcement.isEmpty());
}

TEST(QuickNotes, AreTheLatestOfThoseThatHoldSomething) {
  DockConfiguration config;
  config.profiles.first().widgets = {
      widgetOf(u"scratchNote"_s, {{u"text"_s, u"old"_s}}),
      widgetOf(u"scratchNote"_s, {{u"text"_s, u"  "_s}, {u"edited"_s, u"9"_s}}),
      widgetOf(u"scratchNote"_s, {{u"text"_s, u"new\nline two\n\nthree"_s}, {u"edited"_s, u"7"_s}}),
      widgetOf(u"habitTracker"_s, {{u"text"_s, u"no note"_s}})};
  const QList<DockWidget> notes = QuickNotes::byAge(config);
  ASSERT_EQ(notes.size(), 2);
  EXPECT_EQ(QuickNotes::reading(notes[0].options[u"text"_s]), (NoteReading{u"new"_s, u"line two three"_s}));
  EXPECT_EQ(QuickNotes::reading(notes[1].options[u"text"_s]), (NoteReading{u"old"_s, {}}));
  EXPECT_LE(QuickNotes::reading(u"x"_s.repeated(1'000'000)).title.size(), 1000) << "a tile is not made of all of it";
}

TEST(CalendarStrip, BeginsWhereTheKindSays) {
  EXPECT_EQ(CalendarStrip::days(u"calendarWeek"_s, kNow, Qt::Sunday).first(), QDate(2026, 11, 22));
  EXPECT_EQ(CalendarStrip::days(u"calendarWeek"_s, kNow, Qt::Wednesday).first(), QDate(2026, 11, 18));
  EXPECT_EQ(CalendarStrip::days(u"calendarSevenDays"_s, kNow, Qt::Sunday).last(), QDate(2026, 11, 30));
}

TEST(FigureWords, TakeAForeignFigureApartAndLeaveTheRestAlone) {
  const struct {
    QString text;
    QString figure;
    QString unit;
  } figures[] = {
      {u"1,284"_s, u"1,284"_s, {}},          {u"48.2K"_s, u"48.2"_s, u"K"_s},
      {u"73%"_s, u"73"_s, u"%"_s},           {u"$8,420"_s, u"$8,420"_s, {}},
      {u"US$ 12"_s, u"US$ 12"_s, {}},        {u"-1,284.50 €"_s, u"−1,284.50"_s, u"€"_s},
      {u" 21.4 °C "_s, u"21.4"_s, u"°C"_s},  {u"312 / 500"_s, u"312"_s, u"/ 500"_s},
      {u"58% left"_s, u"58"_s, u"% left"_s}, {u"1.5e+21"_s, u"1.5e+21"_s, {}},
      {u"٧٣٪"_s, u"٧٣"_s, u"٪"_s},           {u"14:30"_s, u"14:30"_s, {}},
  };
  for (const auto& each : figures) {
    EXPECT_EQ(FigureWords::of(each.text), (FigureWords{each.figure, each.unit, true})) << qPrintable(each.text);
  }
  for (const QString& text : {u"2026-11-24"_s, u"7 unread messages"_s, u"v1.2"_s, u"Ines Moreau"_s, u""_s, u"-"_s,
                              u"3rd place of all"_s, QString(5000, u'7')}) {
    EXPECT_EQ(FigureWords::of(text), (FigureWords{text, {}, false})) << qPrintable(text.left(40));
  }
  const struct {
    QString text;
    int sign;
  } changes[] = {{u"+1.24%"_s, 1}, {u"-0.8%"_s, -1}, {u"−2"_s, -1}, {u"–2"_s, -1},
                 {u"0"_s, 0},      {u"-"_s, 0},      {u"+A"_s, 0}};
  for (const auto& each : changes) EXPECT_EQ(FigureWords::signOf(each.text), each.sign) << qPrintable(each.text);
  EXPECT_EQ(FigureWords::withMinus(u"-$12"_s), u"−$12"_s);
  const struct {
    QString text, german, arabic;
  } local[] = {
      {u"-1,284.50 €"_s, u"−1.284,50 €"_s, u"−١٬٢٨٤٫٥٠ €"_s},
      {u"48.2K"_s, u"48,2K"_s, u"٤٨٫٢K"_s},
      {u"14:30"_s, u"14:30"_s, u"١٤:٣٠"_s},
      {u"1,284"_s, u"1.284"_s, u"١٬٢٨٤"_s},
      {u"1.284,50"_s, u"1.284,50"_s, u"1.284,50"_s},
      {u"0,5"_s, u"0,5"_s, u"0,5"_s},
      {u"10.0.0.7"_s, u"10.0.0.7"_s, u"10.0.0.7"_s},
      {u"v1.2"_s, u"v1.2"_s, u"v1.2"_s},
      {u"2026-11-24"_s, u"2026-11-24"_s, u"2026-11-24"_s},
      {u"7 unread messages"_s, u"7 unread messages"_s, {}},
  };
  const QLocale german(QLocale::German, QLocale::Germany), arabic(QLocale::Arabic, QLocale::Egypt);
  for (const auto& each : local) {
    EXPECT_EQ(FigureWords::localised(each.text, german), each.german);
    if (!each.arabic.isEmpty()) {
      EXPECT_EQ(FigureWords::localised(each.text, arabic), each.arabic);
    }
  }
  EXPECT_EQ(FigureWords::withMinus(u"-x"_s), u"-x"_s);
}

TEST(Contributions, AreAddedUpOrRefused) {
  const auto day = [](const QString& date, const QJsonValue& count) {
    return QJsonObject{{u"date"_s, date}, {u"contributionCount"_s, count}};
  };
  const QJsonArray days{day(u"2026-11-24"_s, 3), day(u"2026-11-18"_s, 4), day(u"2026-11-17"_s, 5),
                        day(u"24.11.2026"_s, -1)};
  EXPECT_EQ(ContributionSummary::decode(days, kNow), (ContributionSummary{3, 7, 12}));
  const auto year = ContributionSummary::decode({day(u"2026-11-24"_s, 3e9), day(u"2026-11-23"_s, 2e9)}, kNow);
  EXPECT_EQ(year.totalText(QLocale(QLocale::English)), u"5,000,000,000 in the last year"_s);
  const auto refusal = [](const QJsonArray& refused) {
    try {
      ContributionSummary::decode(refused, kNow);
    } catch (const DomainError& failure) {
      return failure.message();
    }
    return QString();
  };
  for (const QJsonValue& count : {QJsonValue(-1), QJsonValue(1.5), QJsonValue(u"3"_s), QJsonValue()}) {
    EXPECT_EQ(refusal({day(u"2026-11-24"_s, count)}), u"Invalid contribution count."_s);
  }
  EXPECT_EQ(refusal({day(u"2026-1-4"_s, 1)}), u"GitHub did not return contribution dates."_s);
}

}  // namespace
}  // namespace tarnwick
