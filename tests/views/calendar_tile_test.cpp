#include <gtest/gtest.h>

#include <QTimeZone>

#include "DockFixture.h"
#include "views/families/calendar/CalendarTiles.h"
#include "views/families/calendar/MeetingTiles.h"
#include "views/families/calendar/OverviewTiles.h"
#include "views/families/calendar/ProgressTiles.h"
#include "views/families/calendar/ReminderTiles.h"
#include "views/families/clocks/DateTiles.h"
#include "views/families/clocks/DigitTiles.h"
#include "views/tiles/TileContent.h"
#include "widgets/ClockWords.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick::testing {

using namespace Qt::StringLiterals;

namespace {

const QLocale kBritish(QLocale::English, QLocale::UnitedKingdom);
const QLocale kAmerican(QLocale::English, QLocale::UnitedStates);

QDateTime utc(const QDate& date, const QTime& time) { return {date, time, Qt::UTC}; }
QDateTime today(int hour, int minute, int second = 0) { return utc({2026, 11, 24}, QTime(hour, minute, second)); }

TileSources at(const QDateTime& now) {
  TileSources sources;
  sources.now = now;
  sources.locale = kBritish;
  return sources;
}

template <class Content>
Content contentOf(const QString& kind, const TileSources& sources, const QMap<QString, QString>& options = {}) {
  DockWidget widget = testing::widget(kind);
  widget.options = options;
  return contentAs<Content>(makeTileContent(widget, Catalog::find(kind), sources));
}

CalendarEvent event(const QString& title, const QDateTime& start, int minutes, const QString& link = {}) {
  CalendarEvent event;
  event.uid = event.title = title;
  event.start = start;
  event.end = start.addSecs(minutes * 60);
  event.meetingLink = link;
  return event;
}

CalendarEvent allDay(const QString& title, const QDate& day) {
  CalendarEvent whole = event(title, utc(day, QTime(0, 0)), 24 * 60);
  whole.allDay = true;
  return whole;
}

TileSources with(const QDateTime& now, const QList<CalendarEvent>& events, const QList<Reminder>& reminders = {}) {
  TileSources sources = at(now);
  sources.calendar = std::make_shared<const CalendarDigest>(CalendarDigest::make(events, reminders, now));
  return sources;
}

}  // namespace

TEST(ClockWordsTest, CountWeeksAsTheLocaleDoes) {
  struct Case {
    QDate date;
    int iso;
    int american;
  };
  for (const Case& each : {Case{{2026, 11, 24}, 48, 48}, Case{{2026, 1, 1}, 1, 1}, Case{{2027, 1, 1}, 53, 1},
                           Case{{2026, 12, 27}, 52, 1}, Case{{2026, 12, 26}, 52, 52}, Case{{2024, 12, 30}, 1, 1},
                           Case{{2023, 1, 1}, 52, 1}, Case{{2022, 12, 31}, 52, 53}}) {
    EXPECT_EQ(ClockWords::weekNumber(each.date, Qt::Monday), each.iso) << each.date.toString().toStdString();
    EXPECT_EQ(ClockWords::weekNumber(each.date, Qt::Sunday), each.american) << each.date.toString().toStdString();
  }
}

TEST(ClockWordsTest, SayHowFarClocksAreApart) {
  const QDateTime here = today(10, 24);
  struct Case {
    QString zone;
    QString ahead;
    QString day;
  };
  for (const Case& each :
       {Case{u"Asia/Tokyo"_s, u"9 h ahead"_s, {}}, Case{u"Asia/Kolkata"_s, u"5 h 30 min ahead"_s, {}},
        Case{u"America/New_York"_s, u"5 h behind"_s, {}}, Case{u"Pacific/Kiritimati"_s, u"14 h ahead"_s, u"tomorrow"_s},
        Case{u"Pacific/Pago_Pago"_s, u"11 h behind"_s, u"yesterday"_s}, Case{u"Europe/London"_s, u"same time"_s, {}},
        Case{u"Nowhere/AtAll"_s, u"same time"_s, {}}}) {
    const QDateTime there = ClockWords::inZone(here, each.zone);
    EXPECT_EQ(ClockWords::ahead(there, here), each.ahead) << each.zone.toStdString();
    EXPECT_EQ(ClockWords::dayThere(there, here), each.day) << each.zone.toStdString();
  }
}

TEST(ClockWordsTest, CountByTheMinuteOfTheClock) {
  const QDateTime now = today(10, 24, 59);
  for (const auto& [then, words] :
       std::initializer_list<std::pair<QDateTime, QString>>{{today(10, 25), u"in 1 min"_s},
                                                            {today(11, 0), u"in 36 min"_s},
                                                            {today(12, 24), u"in 2 h"_s},
                                                            {today(12, 39), u"in 2 h 15 min"_s},
                                                            {today(10, 24), u"now"_s},
                                                            {today(9, 0), u"now"_s}})
    EXPECT_EQ(ClockWords::until(then, now), words);
  const QDate date = now.date();
  for (const auto& [days, word] : std::initializer_list<std::pair<int, QString>>{{0, u"Today"_s},
                                                                                 {1, u"Tomorrow"_s},
                                                                                 {-1, u"Yesterday"_s},
                                                                                 {3, u"Fri"_s},
                                                                                 {6, u"Mon"_s},
                                                                                 {7, u"1 Dec"_s},
                                                                                 {-2, u"22 Nov"_s}})
    EXPECT_EQ(ClockWords::day(date.addDays(days), date, kBritish), word);
}

TEST(Clocks, WriteTwelveHours) {
  for (const auto& [time, text, half] :
       std::initializer_list<std::tuple<QTime, QString, QString>>{{{0, 5}, u"12:05"_s, u"AM"_s},
                                                                  {{9, 24}, u"9:24"_s, u"AM"_s},
                                                                  {{12, 0}, u"12:00"_s, u"PM"_s},
                                                                  {{23, 59}, u"11:59"_s, u"PM"_s}}) {
    TileSources sources = at(utc({2026, 11, 24}, time));
    sources.locale = kAmerican;
    sources.use24Hour = false;
    for (const QString& kind :
         {u"timeOnly"_s, u"timeSeconds"_s, u"flipClock"_s, u"pixelClock"_s, u"overlapClock"_s, u"ringClock"_s}) {
      const ClockTime shown = contentOf<DigitsContent>(kind, sources).time;
      EXPECT_EQ(shown.text(), text) << kind.toStdString();
      EXPECT_EQ(shown.halfOfDay, half) << kind.toStdString();
    }
  }
}

TEST(Clocks, SayTheUsersWordForTheirZone) {
  const TileSources sources = at(today(10, 24));
  const QMap<QString, QString> options{{u"timezone"_s, u"Asia/Kolkata"_s}, {u"zoneLabel"_s, u"Mumbai"_s}};
  for (const WidgetDefinition& definition : Catalog::items()) {
    if (definition.family != "clock"_L1 || definition.id == "worldClockList"_L1) continue;
    DockWidget clock = widget(definition.id);
    const auto said = [&](const QString& zone, const QString& label) {
      clock.options = {{u"timezone"_s, zone}, {u"zoneLabel"_s, label}};
      return makeTileContent(clock, definition, sources).describe(u"N"_s).value;
    };
    EXPECT_TRUE(said(u"Asia/Kolkata"_s, u"Mumbai"_s).contains(u"Mumbai"_s)) << qPrintable(definition.id);
    EXPECT_TRUE(said({}, u"Home"_s).contains(u"Home"_s)) << qPrintable(definition.id);
    EXPECT_FALSE(said(u"12.5"_s, u"Mumbai"_s).contains(u"Mumbai"_s)) << qPrintable(definition.id);
  }
  EXPECT_EQ(labelled(u"Mumbai"_s, {u"Tuesday"_s, u"Tue"_s}),
            (QStringList{u"Mumbai · Tuesday"_s, u"Mumbai · Tue"_s, u"Mumbai"_s}));
  EXPECT_EQ(contentOf<TimeDateContent>(u"digitalClock"_s, sources, options).label, u"Mumbai"_s);
}

TEST(Clocks, KnowOtherPlaces) {
  const TileSources sources = at(today(10, 24));
  const auto world = [&](const QMap<QString, QString>& options) {
    return contentOf<WorldTimeContent>(u"worldClockCity"_s, sources, options);
  };
  EXPECT_EQ(world({}).captions, QStringList{u"Local"_s});
  EXPECT_EQ(world({}).sky, Sky::Here);
  EXPECT_EQ(world({{u"timezone"_s, u"Asia/Tokyo"_s}}).captions.first(), u"Tokyo · 9 h ahead"_s);
  EXPECT_EQ(world({{u"timezone"_s, u"Asia/Tokyo"_s}}).sky, Sky::Night);
  EXPECT_EQ(world({{u"timezone"_s, u"Asia/Kolkata"_s}, {u"zoneLabel"_s, u"Mumbai"_s}}).captions.last(), u"Mumbai"_s);
  EXPECT_EQ(world({{u"timezone"_s, u"Asia/Kolkata"_s}}).sky, Sky::Day);
  EXPECT_EQ(world({{u"timezone"_s, u"12.5"_s}, {u"zoneLabel"_s, u"Mumbai"_s}}).captions, QStringList{u"Local"_s});

  EXPECT_EQ(worldZones({}).size(), 3);
  EXPECT_EQ(worldZones(u" Asia/Tokyo ,,Mars/Base,Asia/Tokyo"_s), QStringList{u"Asia/Tokyo"_s});
  EXPECT_EQ(worldZones(u"Mars/Base"_s).size(), 3);
  const auto list = contentOf<WorldListContent>(u"worldClockList"_s, sources, {{u"zones"_s, u"America/New_York"_s}});
  EXPECT_EQ(list.rows, (QList<WorldListContent::Row>{{u"New York"_s, u"05:24"_s, u"05:24"_s, {}}}));

  EXPECT_EQ(contentOf<DateContent>(u"dateOnly"_s, sources).date, u"24 Nov"_s);
  EXPECT_EQ(contentOf<DateContent>(u"dateOnly"_s, sources).captions.first(), u"Tuesday · Week 48"_s);
  EXPECT_EQ(contentOf<DayNumberContent>(u"dayNumber"_s, sources).weekday, u"TUE"_s);
  TileSources windy = sources;
  RemoteReading reading;
  reading.value.value = u"6°"_s;
  windy.weather.setExample(reading);
  EXPECT_FALSE(contentOf<TodayClockContent>(u"todayClock"_s, windy).weather);
  EXPECT_TRUE(contentOf<TodayClockContent>(u"todayClock"_s, windy, {{u"city"_s, u"Kendal"_s}}).weather);
}

TEST(Progress, EndsOnlyWhenItIsOver) {
  struct Case {
    QString kind;
    QDateTime now;
    int percent;
    int passed;
    int marks;
  };
  for (const Case& each : {Case{u"calendarDayProgress"_s, today(0, 0), 0, 0, 24},
                           Case{u"calendarDayProgress"_s, today(10, 24), 43, 10, 24},
                           Case{u"calendarDayProgress"_s, today(23, 59, 59), 99, 23, 24},
                           Case{u"calendarMonthProgress"_s, today(10, 24), 78, 23, 30},
                           Case{u"calendarMonthProgress"_s, utc({2028, 2, 29}, {23, 59}), 99, 28, 29},
                           Case{u"calendarMonthProgress"_s, utc({2026, 12, 1}, {0, 0}), 0, 0, 31},
                           Case{u"calendarYearProgress"_s, today(10, 24), 90, 10, 12},
                           Case{u"calendarYearProgress"_s, utc({2026, 12, 31}, {23, 59}), 99, 11, 12}}) {
    const auto content = contentOf<ProgressContent>(each.kind, at(each.now));
    EXPECT_EQ(content.percent, each.percent) << each.kind.toStdString();
    EXPECT_EQ(content.passed, each.passed) << each.kind.toStdString();
    EXPECT_EQ(content.marks, each.marks) << each.kind.toStdString();
  }
}

TEST(Events, AreDescribedInWords) {
  struct Case {
    QDateTime now;
    QList<CalendarEvent> events;
    QString today;
    QString next;
    QString third;
  };
  const QList<CalendarEvent> review{event(u"Review"_s, today(11, 0), 45)};
  const QList<CalendarEvent> holiday{allDay(u"Holiday"_s, {2026, 11, 24})};
  for (const Case& each : {
           Case{today(10, 24), review, u"11:00 – 11:45"_s, u"in 36 min"_s, u"in 36 min"_s},
           Case{today(11, 10), review, u"11:00 – 11:45"_s, u"now"_s, u"now"_s},
           Case{today(11, 45), review, u"Nothing is planned"_s, u"Nothing is planned"_s, {}},
           Case{today(11, 0).addDays(-1), review, u"Tomorrow, 11:00"_s, u"Tomorrow, 11:00"_s, u"Tomorrow"_s},
           Case{today(9, 0), holiday, u"All day"_s, u"All day"_s, u"All day"_s},
           Case{today(9, 0).addDays(-2), holiday, u"Tue"_s, u"Tue"_s, u"Tue"_s},
       }) {
    const TileSources sources = with(each.now, each.events);
    EXPECT_EQ(contentOf<TodayEventContent>(u"calendar"_s, sources).caption, each.today);
    EXPECT_EQ(contentOf<NextEventContent>(u"calendarNextEvent"_s, sources).caption, each.next);
    const auto three = contentOf<EventListContent>(u"calendarThreeEvents"_s, sources);
    EXPECT_EQ(three.rows.isEmpty() ? QString() : three.rows.first().word, each.third);
  }
}

TEST(Events, FillTheDaysThatTheyTouch) {
  CalendarEvent trip = event(u"Trip"_s, today(18, 0), 60 * 40);  // Into the day after tomorrow.
  const TileSources sources = with(today(19, 0), {trip, event(u"Over"_s, today(8, 0), 30)});
  const auto days = contentOf<DaysContent>(u"calendarSevenDays"_s, sources).days;
  ASSERT_EQ(days.size(), 7);
  EXPECT_EQ(days[0].events, 2);
  EXPECT_EQ(days[1].events, 1);
  EXPECT_EQ(days[2].events, 1);
  EXPECT_EQ(days[3].events, 0);
  const auto week = contentOf<DaysContent>(u"calendarWeek"_s, sources).days;
  EXPECT_EQ(week[0].number, u"23"_s);
  EXPECT_TRUE(week[1].today);
  EXPECT_TRUE(week[5].free);
  TileSources arabic = sources;
  arabic.locale = QLocale(QLocale::Arabic, QLocale::Egypt);
  const auto names = contentOf<DaysContent>(u"calendarSevenDays"_s, arabic).days;
  EXPECT_NE(names[0].name, names[1].name) << "all of its short names begin alike";
  EXPECT_EQ(ClockWords::dayAndMonth({2026, 11, 24}, arabic.locale), u"٢٤ نوفمبر"_s);
  const auto agenda = contentOf<EventListContent>(u"calendarDayAgenda"_s, sources);
  ASSERT_EQ(agenda.rows.size(), 1) << "what is over is left out";
  EXPECT_EQ(contentOf<EventListContent>(u"calendarDayAgenda"_s, with(today(9, 0), {})).empty, u"No events today"_s);
}

TEST(Meetings, CountDownToTheNextOne) {
  const QString link = u"https://meet.example.org/1"_s;
  const QList<CalendarEvent> meeting{event(u"Review"_s, today(11, 0), 45, link)};
  for (const auto& [now, figure, unit] :
       std::initializer_list<std::tuple<QDateTime, QString, QString>>{{today(10, 24), u"36"_s, u"min"_s},
                                                                      {today(8, 55), u"2:05"_s, u"h"_s},
                                                                      {today(11, 10), u"Now"_s, {}},
                                                                      {today(9, 0).addDays(-2), u"Tue"_s, u"11:00"_s},
                                                                      {today(12, 0), u"–"_s, {}}}) {
    const auto content = contentOf<MeetingContent>(u"calendarMeetingCompact"_s, with(now, meeting));
    EXPECT_EQ(content.figure, figure);
    EXPECT_EQ(content.unit, unit);
  }
  const TileContent center = contentOf<MeetingCenterContent>(u"calendarMeetingDetail"_s, with(today(10, 24), meeting));
  EXPECT_EQ(center.partAt({180, {150, 32}}), 0);
  EXPECT_EQ(center.partAt({180, {60, 32}}), std::nullopt);
  const TileContent none = contentOf<MeetingCenterContent>(u"calendarMeetingDetail"_s, with(today(10, 24), {}));
  EXPECT_EQ(none.partAt({180, {150, 32}}), std::nullopt);
  EXPECT_EQ(contentOf<MeetingContent>(u"calendarMeeting"_s, with(today(10, 24), meeting)).spoken, u"1 meeting today"_s);
}

TEST(Reminders, ComeDueAndAreTickedOff) {
  const auto reminder = [](const QString& title, const std::optional<QDateTime>& due, bool ticks = true) {
    Reminder made;
    made.uid = made.title = title;
    made.due = due;
    made.canComplete = ticks;
    return made;
  };
  Reminder done = reminder(u"Stamps"_s, today(8, 0));
  done.completed = true;
  done.completedAt = today(8, 5);
  const TileSources sources = with(today(10, 24), {},
                                   {reminder(u"Some day"_s, std::nullopt), reminder(u"Dentist"_s, today(14, 0), false),
                                    reminder(u"Invoice"_s, today(9, 0).addDays(-1)), done});
  const TileContent agenda = contentOf<RemindersContent>(u"remindersAgenda"_s, sources);
  const auto& rows = contentAs<RemindersContent>(agenda).rows;
  ASSERT_EQ(rows.size(), 3);
  EXPECT_EQ(rows[0], (RemindersContent::Row{u"Invoice"_s, u"Yesterday"_s, true, true}));
  EXPECT_EQ(rows[1].word, u"14:00"_s);
  EXPECT_TRUE(rows[2].word.isEmpty());
  EXPECT_EQ(agenda.partAt({180, {17, 16}}), 0);
  EXPECT_EQ(agenda.partAt({180, {17, 32}}), std::nullopt) << "its list can only be read";
  EXPECT_EQ(agenda.partAt({180, {17, 48}}), 2);
  EXPECT_EQ(agenda.partAt({180, {90, 16}}), std::nullopt);
  EXPECT_EQ(agenda.partAt({180, {17, 30}, 0.5}), 0) << "small docks have two rows, farther apart";
  EXPECT_EQ(contentOf<DueTodayContent>(u"remindersToday"_s, sources), (DueTodayContent{2, 1}));
  EXPECT_EQ(contentOf<RemindersContent>(u"remindersNext"_s, with(today(10, 24), {}, {done})).empty, u"All done"_s);
}

TEST(CalendarTiles, SayWhatIsMissing) {
  auto digest = std::make_shared<CalendarDigest>();
  digest->calendarMessage = u"Enable Calendar access to see your events."_s;
  digest->reminderMessage = u"Enable Reminders access to see your reminders."_s;
  TileSources sources = at(today(10, 24));
  sources.calendar = digest;
  for (const WidgetDefinition& definition : Catalog::items()) {
    if (definition.family != "calendar"_L1 && definition.family != "reminders"_L1) continue;
    if (definition.id == "todayOverview"_L1) continue;  // It has other figures to show.
    const QString tip = makeTileContent(widget(definition.id), definition, sources).describe(definition.name).tip();
    EXPECT_TRUE(tip.contains(definition.family == "calendar"_L1 ? digest->calendarMessage : digest->reminderMessage))
        << tip.toStdString();
  }
  // What is shown may not be all.
  digest->problem = u"A file is torn."_s;
  EXPECT_EQ(tileProblem(Catalog::find(u"todayOverview"_s), sources), digest->problem);
  EXPECT_EQ(tileProblem(Catalog::find(u"digitalClock"_s), sources), QString());
  const auto overview = contentOf<OverviewContent>(u"todayOverview"_s, sources);
  ASSERT_EQ(overview.figures.size(), 1);
  EXPECT_EQ(overview.figures.first().label, u"To-dos"_s);
}

TEST(CalendarTiles, ChangeWithTheMinuteOnly) {
  const QList<CalendarEvent> events{event(u"Review"_s, today(11, 0), 45, u"https://meet.example.org"_s)};
  const TileSources first = with(today(10, 24, 1), events);
  const TileSources last = with(today(10, 24, 59), events);
  for (const WidgetDefinition& definition : Catalog::items()) {
    if (definition.family != "calendar"_L1 && definition.family != "progress"_L1 && definition.family != "clock"_L1)
      continue;
    if (definition.id == "timeSeconds"_L1 || definition.id.startsWith("analog"_L1)) continue;
    const DockWidget tile = widget(definition.id);
    EXPECT_EQ(makeTileContent(tile, definition, first), makeTileContent(tile, definition, last))
        << definition.id.toStdString();
  }
}

}  // namespace tarnwick::testing
