#include <gtest/gtest.h>

#include "DockFixture.h"
#include "commandbar/UtilityText.h"
#include "views/families/habits/HabitTiles.h"
#include "views/families/notes/NoteTiles.h"
#include "views/families/timers/TimerFacts.h"
#include "views/families/timers/TimerTiles.h"
#include "views/families/utilities/UtilityOptions.h"
#include "views/families/utilities/UtilityTiles.h"
#include "views/tiles/TileContent.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

using Options = QMap<QString, QString>;

DockWidget with(const QString& kind, const Options& options) {
  DockWidget made = widget(kind);
  made.options = options;
  return made;
}

template <class Content>
Content dailyContent(const QString& kind, const Options& options, const TileSources& sources = morning()) {
  return contentAs<Content>(makeTileContent(with(kind, options), Catalog::find(kind), sources));
}

QString inSeconds(int seconds) { return QString::number(morning().now.toSecsSinceEpoch() + seconds); }

TodoItem todo(const QString& text, bool done) { return {QUuid::createUuid(), text, done}; }

}  // namespace

TEST(TimerTile, SaysWhereItStands) {
  using Glyph = TimerContent::Glyph;
  const struct {
    QString kind;
    Options options;
    const char* figure;
    const char* word;
    Glyph glyph;
    double share;
    int lit;
    int marks;
  } cases[] = {
      {u"timer"_s, {}, "25:00", "Ready", Glyph::Play, 0, 0, 0},
      {u"timer"_s, {{u"minutes"_s, u"abc"_s}}, "25:00", "Ready", Glyph::Play, 0, 0, 0},
      {u"timer"_s, {{u"minutes"_s, u"90"_s}}, "1:30:00", "Ready", Glyph::Play, 0, 0, 0},
      {u"timer"_s, {{u"remaining"_s, u"750"_s}}, "12:30", "Paused", Glyph::Play, 0.5, 0, 0},
      {u"timer"_s, {{u"deadline"_s, inSeconds(375)}}, "06:15", "Running", Glyph::Pause, 0.25, 0, 0},
      {u"timer"_s, {{u"deadline"_s, inSeconds(-5)}}, "00:00", "Running", Glyph::Pause, 0, 0, 0},
      {u"timer"_s, {{u"remaining"_s, u"0"_s}}, "00:00", "Done", Glyph::Play, 0, 0, 0},
      {u"timer"_s, {{u"remaining"_s, u"59.2"_s}}, "01:00", "Paused", Glyph::Play, 59.2 / 1500, 0, 0},
      {u"exercise"_s, {{u"remaining"_s, u"0"_s}}, "00:00", "Time to move", Glyph::Walk, 0, 0, 0},
      {u"stopwatch"_s, {}, "00:00", "Ready", Glyph::Play, 0, 0, 0},
      {u"stopwatch"_s, {{u"started"_s, inSeconds(-75)}}, "01:15", "Running", Glyph::Pause, 0.25, 0, 0},
      {u"stopwatch"_s, {{u"elapsed"_s, u"59.9"_s}}, "00:59", "Paused", Glyph::Play, 59.0 / 60, 0, 0},
      {u"posture"_s, {}, "25:00", "Ready", Glyph::Seated, 0, 0, 0},
      {u"posture"_s,
       {{u"phase"_s, u"standing"_s}, {u"standingMinutes"_s, u"10"_s}, {u"deadline"_s, inSeconds(300)}},
       "05:00",
       "Standing",
       Glyph::Seated,
       0.5,
       0,
       0},
      {u"pomodoro"_s, {}, "25:00", "Ready", Glyph::Play, 0, 0, 4},
      {u"pomodoro"_s,
       {{u"phase"_s, u"work"_s}, {u"sessions"_s, u"6"_s}, {u"deadline"_s, inSeconds(375)}},
       "06:15",
       "Focus",
       Glyph::Pause,
       0.75,
       2,
       4},
      {u"pomodoro"_s, {{u"phase"_s, u"longBreak"_s}}, "15:00", "Long break", Glyph::Play, 0, 0, 0},
      {u"pomodoro"_s, {{u"cycleLength"_s, u"99"_s}, {u"sessions"_s, u"-3"_s}}, "25:00", "Ready", Glyph::Play, 0, 0, 12},
  };
  for (const auto& each : cases) {
    const auto content = dailyContent<TimerContent>(each.kind, each.options);
    SCOPED_TRACE(each.kind.toStdString() + ' ' + each.figure + ' ' + each.word);
    EXPECT_EQ(content.figure.toStdString(), each.figure);
    EXPECT_EQ(content.word.toStdString(), each.word);
    EXPECT_EQ(content.glyph, each.glyph);
    EXPECT_NEAR(content.share, each.share, 1e-9);
    EXPECT_EQ(content.lit, each.lit);
    EXPECT_EQ(content.marks, each.marks);
  }
}

TEST(TimerTile, KnowsWhatComesNext) {
  const DockWidget third = with(u"pomodoro"_s, {{u"sessions"_s, u"3"_s}, {u"autoContinue"_s, u"true"_s}});
  EXPECT_EQ(nextTimerPhase(third), u"longBreak"_s);
  EXPECT_EQ(nextTimerPhase(with(u"pomodoro"_s, {{u"phase"_s, u"longBreak"_s}})), u"work"_s);
  EXPECT_EQ(nextTimerPhase(with(u"posture"_s, {{u"standingMinutes"_s, u"5"_s}})), u"standing"_s);
  EXPECT_EQ(nextTimerPhase(with(u"posture"_s, {})), u"seated"_s);
  // All sessions of a round are lit while its long break lasts.
  EXPECT_EQ(
      timerFacts(with(u"pomodoro"_s, {{u"phase"_s, u"longBreak"_s}, {u"sessions"_s, u"4"_s}}), morning().now).session,
      4);
}

TEST(Parts, AreWhereAUserExpectsThem) {
  TileSources sources = morning();
  for (int i = 0; i < 5; ++i) sources.todos.append(todo(u"Item %1"_s.arg(i), i < 2));
  const auto part = [&](const QString& kind, QPointF point, double scale = 1) {
    const WidgetDefinition& definition = Catalog::find(kind);
    return makeTileContent(widget(kind), definition, sources).partAt({definition.width, point, scale});
  };
  EXPECT_EQ(part(u"timer"_s, {32, 53}), 0);
  EXPECT_EQ(part(u"timer"_s, {50, 50}), std::nullopt);
  EXPECT_EQ(part(u"timer"_s, {90, 32}), std::nullopt);
  EXPECT_EQ(part(u"drinkWater"_s, {24, 32}), 0);
  EXPECT_EQ(part(u"drinkWater"_s, {70, 32}), std::nullopt);
  EXPECT_EQ(part(u"habitTracker"_s, {102, 44}), 0);
  EXPECT_EQ(part(u"habitTracker"_s, {88, 44}), std::nullopt) << "yesterday is over";
  // The one done last, then what is open; a small dock has space for less.
  EXPECT_EQ(part(u"quickTodo"_s, {18, 16}), 1);
  EXPECT_EQ(part(u"quickTodo"_s, {18, 48}), 3);
  EXPECT_EQ(part(u"quickTodo"_s, {60, 48}), std::nullopt);
  EXPECT_EQ(part(u"quickTodo"_s, {18, 32}, 0.5), 2);
  EXPECT_EQ(part(u"quickTodo"_s, {18, 16}, 0.5), std::nullopt);
}

TEST(TodosTile, ShowsTheOneDoneLastAndWhatIsOpen) {
  const auto shown = [](const QString& pattern) {
    TileSources sources = morning();
    for (const QChar mark : pattern) sources.todos.append(todo(QString(mark), mark.isLower()));
    QString items;
    for (const auto& item : dailyContent<TodosContent>(u"quickTodo"_s, {}, sources).items) items += item.text;
    return items;
  };
  for (const auto& [pattern, wanted] : {std::pair{u"aBCdE"_s, u"aBC"_s},
                                        {u"ABCD"_s, u"ABC"_s},
                                        {u"abCdE"_s, u"bCE"_s},
                                        {u"abcd"_s, u"bcd"_s},
                                        {u"aB"_s, u"aB"_s},
                                        {QString(), QString()}})
    EXPECT_EQ(shown(pattern), wanted) << pattern.toStdString();
}

TEST(HabitTiles, CountDaysAndGlasses) {
  const auto habit = dailyContent<HabitContent>(
      u"habitTracker"_s, {{u"text"_s, u" Read\nmore "_s}, {u"history"_s, u"2026-11-18,2026-11-22,2026-11-23,x"_s}});
  EXPECT_EQ(habit.habit, u"Read more"_s);
  EXPECT_EQ(habit.streak, 2);
  EXPECT_EQ(habit.days, (QList<bool>{true, false, false, false, true, true, false}));
  EXPECT_EQ(dailyContent<HabitContent>(u"habitTracker"_s, {}).habit, u"Habit Tracker"_s);

  const Options yesterday{{u"glasses"_s, u"5"_s}, {u"day"_s, u"2026-11-23"_s}, {u"goal"_s, u"none"_s}};
  EXPECT_EQ(dailyContent<WaterContent>(u"drinkWater"_s, yesterday), (WaterContent{0, 8}));
}

TEST(UtilityText, SpeaksTheLocale) {
  const QLocale english(QLocale::English, QLocale::UnitedKingdom);
  const QLocale german(QLocale::German, QLocale::Germany);
  const struct {
    QLocale locale;
    const char* text;
    const char* answer;
  } sums[] = {
      {english, "1/3", "0.3333333333"},         {english, "1,234.5 * 2", "2,469"}, {english, "2-5", "−3"},
      {english, "0-0.00000000001", "0"},        {german, "1,5 × 2", "3"},          {german, "1.000,5+1", "1.001,5"},
      {english, "1,23", "Invalid expression."},
  };
  for (const auto& [locale, text, wanted] : sums) {
    const Answer answer = UtilityText::calculate(QString::fromUtf8(text), locale);
    EXPECT_EQ((answer.value ? UtilityText::number(*answer.value, locale) : answer.sentence).toStdString(), wanted)
        << text;
  }
  EXPECT_EQ(UtilityText::calculate(UtilityText::typed(-1234.5, german), german).value, -1234.5);
  EXPECT_EQ(UtilityText::convert(u" −40 "_s, u"°F"_s, u"°C"_s, english).value, -40);
  EXPECT_EQ(UtilityText::convert(u"1 2"_s, u"m"_s, u"km"_s, english).sentence, u"Enter a number."_s);
  EXPECT_EQ(UtilityText::convert(u"1"_s, u"m"_s, u"kg"_s, english).sentence, u"Choose compatible units."_s);
  for (const double value : {0.0, 1e-300, -1e-5, 0.5, 1e5, -123456.789, 1e300})
    EXPECT_FALSE(UtilityText::forms(value, english).isEmpty()) << value;
  EXPECT_EQ(UtilityText::forms(1e-5, english).last(), u"1.0E−05"_s) << "never rounded to nothing";
}

TEST(UtilityTiles, ConvertMoneyByTheRateThatIsKnown) {
  const QLocale english(QLocale::English, QLocale::UnitedKingdom);
  const Options money{{u"value"_s, u"-12.5"_s}, {u"from"_s, u"EUR"_s}, {u"to"_s, u"JPY"_s}};
  EXPECT_EQ(dailyContent<ResultContent>(u"converter"_s, money).figures, QStringList{u"–"_s});
  TileSources known = morning();
  known.readings.rates.insert(u"EUR/JPY"_s, 163.2749);
  EXPECT_EQ(dailyContent<ResultContent>(u"converter"_s, money, known).exact, u"−2,040.94"_s);
  const struct {
    const char* amount;
    std::optional<double> worth;
  } amounts[] = {{"1", 1.08}, {"0.01", 0.010842}, {"−3", -3.25}, {"1e308", {}}, {"", {}}, {"ten", {}}};
  for (const auto& [amount, worth] : amounts) {
    const std::optional<double> got = exchanged(QString::fromUtf8(amount), 1.0842, english);
    ASSERT_EQ(got.has_value(), worth.has_value()) << amount;
    EXPECT_DOUBLE_EQ(got.value_or(0), worth.value_or(0)) << amount;
  }
  EXPECT_EQ(offeredCurrencies(QLocale(u"de_CH"_s), {}).first(3), (QStringList{u"CHF"_s, u"EUR"_s, u"USD"_s}));
  EXPECT_EQ(offeredCurrencies(QLocale::c(), {{}, u"EUR"_s, u"ISK"_s}).last(), u"ISK"_s);
}

TEST(UtilityTiles, ShowWhatWasDoneLast) {
  EXPECT_EQ(dailyContent<ResultContent>(u"converter"_s, {}).figures, QStringList{u"6.2"_s});
  EXPECT_EQ(dailyContent<ResultContent>(u"converter"_s, {{u"from"_s, u"m"_s}, {u"to"_s, u"kg"_s}}).source, u"10 km"_s);
  EXPECT_EQ(dailyContent<ResultContent>(u"converter"_s, {{u"value"_s, u"abc"_s}}).figures, QStringList{u"–"_s});
  EXPECT_EQ(dailyContent<ResultContent>(u"calculator"_s, {{u"expression"_s, u"1/0"_s}}).figures, QStringList{u"0"_s});
  for (const auto& [text, hex] : {std::pair{u"2e8c94"_s, u"#2E8C94"_s},
                                  {u"#fff"_s, u"#FFFFFF"_s},
                                  {u"#12345"_s, u"Pick"_s},
                                  {u"red"_s, u"Pick"_s},
                                  {QString(), u"Pick"_s}})
    EXPECT_EQ(dailyContent<ColorContent>(u"colorPicker"_s, {{u"color"_s, text}}).hex, hex) << text.toStdString();
  EXPECT_EQ(dailyContent<EmojiContent>(u"emojiRecents"_s, {{u"recents"_s, u"🔥 ☕ 🚀 ✅"_s}}).emoji,
            (QStringList{u"🔥"_s, u"☕"_s, u"🚀"_s}));
}

}  // namespace tarnwick::testing
