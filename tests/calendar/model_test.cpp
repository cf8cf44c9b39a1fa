#include <gtest/gtest.h>

#include "calendar/Calendar.h"
#include "calendar/CalendarModel.h"
#include "calendar/MeetingLink.h"
#include "config/CalendarFolders.h"
#include "support/TestScheduler.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

QDateTime at(int day, int hour, int minute = 0) { return {QDate(2026, 11, day), QTime(hour, minute)}; }

CalendarEvent timed(const QString& title, const QDateTime& start, int minutes, const QString& link = {}) {
  CalendarEvent event;
  event.uid = title;
  event.title = title;
  event.start = start;
  event.end = start.addSecs(minutes * 60);
  event.meetingLink = link;
  return event;
}

CalendarEvent days(const QString& title, int day, int count) {
  CalendarEvent event = timed(title, at(day, 0), 0);
  event.end = QDate(2026, 11, day).addDays(count).startOfDay();
  event.allDay = true;
  return event;
}

template <class Record>
std::string titles(const QList<Record>& records) {
  QString all;
  for (const Record& record : records) all += record.title;
  return all.toStdString();
}

TEST(CalendarModel, TellsWhatIsOnAndWhatComes) {
  const QString link = u"https://meet.jit.si/x"_s;
  const QList<CalendarEvent> events{timed(u"late "_s, at(24, 22), 180),
                                    timed(u"stand-up "_s, at(24, 9), 30, link),
                                    days(u"holiday "_s, 24, 1),
                                    days(u"trip "_s, 23, 3),
                                    timed(u"review "_s, at(24, 9, 30), 60, link),
                                    timed(u"lunch "_s, at(24, 12), 60),
                                    timed(u"call "_s, at(25, 10), 30, link),
                                    days(u"fair "_s, 25, 1),
                                    timed(u"bell "_s, at(24, 9, 20), 0)};
  EXPECT_EQ(titles(CalendarModel::today(events, at(24, 15))), "trip holiday stand-up bell review lunch late ");
  EXPECT_EQ(titles(CalendarModel::onDay(events, QDate(2026, 11, 25))), "trip fair late call ");
  EXPECT_EQ(CalendarModel::count(events, QDate(2026, 11, 26)), 0);
  const auto agenda = CalendarModel::agenda(events, QDate(2026, 11, 25), 2);
  ASSERT_EQ(agenda.size(), 2);
  EXPECT_EQ(agenda[1], (CalendarModel::Day{QDate(2026, 11, 26), {}}));

  const struct {
    QDateTime now;
    const char* upcoming;
    const char* meeting;
    const char* meetingsLeft;
  } moments[] = {
      {at(24, 8), "stand-up bell review ", "stand-up ", "stand-up review "},
      {at(24, 9, 20), "stand-up bell review ", "stand-up ", "stand-up review "},
      {at(24, 9, 24), "stand-up review lunch ", "stand-up ", "stand-up review "},
      {at(24, 9, 25), "stand-up review lunch ", "review ", "stand-up review "},
      {at(24, 10, 30), "lunch late fair ", "call ", ""},
      {at(25, 1), "call trip fair ", "call ", "call "},
      {at(25, 10, 30), "trip fair ", "", ""},
      {at(27, 0), "", "", ""},
  };
  for (const auto& moment : moments) {
    const std::string when = moment.now.toString().toStdString();
    EXPECT_EQ(titles(CalendarModel::upcoming(events, moment.now, 3)), moment.upcoming) << when;
    const auto meeting = CalendarModel::nextMeeting(events, moment.now);
    EXPECT_EQ(meeting ? meeting->title.toStdString() : "", moment.meeting) << when;
    EXPECT_EQ(titles(CalendarModel::meetingsToday(events, moment.now)), moment.meetingsLeft) << when;
    const auto next = CalendarModel::next(events, moment.now);
    EXPECT_EQ(next ? next->title : QString(), CalendarModel::upcoming(events, moment.now, 1).value(0).title) << when;
  }
}

TEST(ReminderModel, OrdersWhatIsToDo) {
  QList<Reminder> all;
  const auto add = [&](const QString& title, std::optional<QDateTime> due, bool allDay = false, int priority = 0,
                       const QString& occasion = {}) {
    Reminder reminder;
    reminder.uid = occasion.isEmpty() ? title : u"series"_s;
    reminder.title = title;
    reminder.due = due;
    reminder.dueAllDay = allDay;
    reminder.priority = priority;
    reminder.occasion = occasion;
    all.append(reminder);
  };
  add(u"never "_s, {});
  add(u"urgent "_s, {}, false, 1);
  add(u"tomorrow "_s, at(25, 0), true);
  add(u"today "_s, at(24, 0), true);
  add(u"over "_s, at(24, 9));
  add(u"soon "_s, at(24, 18));
  add(u"old "_s, at(20, 8), false, 0, u"20"_s);
  add(u"last "_s, at(23, 8), false, 0, u"23"_s);
  add(u"following "_s, at(26, 8), false, 0, u"26"_s);
  all.append(all[3]);
  all.last().completed = true;
  all.last().completedAt = at(24, 8);
  const QDateTime now = at(24, 12);
  EXPECT_EQ(titles(ReminderModel::open(all, now)), "last today over soon tomorrow urgent never ");
  EXPECT_EQ(titles(ReminderModel::dueToday(all, now)), "last today over soon ");
  EXPECT_EQ(titles(ReminderModel::onDay(all, now, QDate(2026, 11, 25))), "tomorrow ");
  EXPECT_EQ(titles(ReminderModel::completedToday(all, now)), "today ");
  EXPECT_EQ(ReminderModel::next(all, now)->title, u"last "_s);
  EXPECT_EQ(ReminderModel::next({}, now), std::nullopt);
  QStringList overdue;
  for (const Reminder& reminder : all) {
    if (ReminderModel::isOverdue(reminder, now)) overdue << reminder.title;
  }
  EXPECT_EQ(overdue.join(QString()), u"over old last "_s);
  // Before anything of a series is overdue, the next one stands for it.
  EXPECT_EQ(titles(ReminderModel::dueToday(all, at(19, 12))), "");
  EXPECT_TRUE(titles(ReminderModel::open(all, at(19, 12))).starts_with("old today"));
}

TEST(MeetingLink, IsWhereOneJoins) {
  const char* const safe =
      "https://eur01.safelinks.protection.outlook.com/"
      "?url=https%3A%2F%2Fteams.microsoft.com%2Fl%2Fmeetup-join%2F19%3am&d=0";
  const struct {
    const char* what;
    const char *conference, *place, *notes, *url;
    const char *link, *service;
  } cases[] = {
      {"nothing", "", "Room 5", "Bring http://example.org and https:// too", "", "", ""},
      {"in the notes", "", "", "(https://us02web.zoom.us/j/1?pwd=a.b_C1). Help: https://support.zoom.us/hc", "",
       "https://us02web.zoom.us/j/1?pwd=a.b_C1", "Zoom"},
      {"behind telephone numbers", "", "",
       "<a href=\"https://zoom.us/u/a\"></a><a href=\"https://zoom.us/my/me?a=1&amp;b=2\">", "",
       "https://zoom.us/my/me?a=1&b=2", "Zoom"},
      {"wrapped", "", "", safe, "", "https://teams.microsoft.com/l/meetup-join/19:m", "Microsoft Teams"},
      {"what the calendar gives comes first", "tel:+49\nhttps://meet.google.com/a-b", "https://acme.webex.com/meet/ada",
       "", "", "https://meet.google.com/a-b", "Google Meet"},
      {"the place", "", "Online: https://acme.webex.com/meet/ada, or room 5", "", "", "https://acme.webex.com/meet/ada",
       "Webex"},
      {"its own address", "", "", "", "https://meet.jit.si/Room", "https://meet.jit.si/Room", "Jitsi Meet"},
      {"a known service before an unknown place", "", "https://example.org/room", "https://whereby.com/us", "",
       "https://whereby.com/us", "Whereby"},
      {"an unknown place", "", "https://talk.example.org/x7", "", "", "https://talk.example.org/x7", ""},
      {"an unknown conference", "https://v.example.org/1", "https://example.org/map", "", "", "https://v.example.org/1",
       ""},
      {"an agenda is no meeting", "", "", "Agenda: https://docs.example.org/1", "https://example.org/event", "", ""},
      {"hosts that only look alike", "", "", "https://notzoom.us/j/1 https://zoom.us.example.org/j/1", "", "", ""},
      {"a front page", "", "", "https://meet.google.com/", "", "", ""},
  };
  for (const auto& c : cases) {
    CalendarEvent event;
    event.conferences = QString::fromUtf8(c.conference).split(u'\n');
    event.location = QString::fromUtf8(c.place);
    event.notes = QString::fromUtf8(c.notes);
    event.url = QString::fromUtf8(c.url);
    const QString link = MeetingLink::find(event);
    EXPECT_EQ(link.toStdString(), c.link) << c.what;
    EXPECT_EQ(MeetingLink::service(link).toStdString(), c.service) << c.what;
  }
}

/// A source that answers when a test says so.
struct ScriptedSource final : CalendarSource {
  QList<CalendarRange> asked;
  QStringList folders;
  Loaded loaded;
  Done done;

  void load(const CalendarRange& range, QObject*, Loaded answer) override {
    asked.append(range);
    loaded = std::move(answer);
  }
  void setCompleted(const Reminder&, bool, const QDateTime&, QObject*, Done answer) override {
    done = std::move(answer);
  }
  void setFolders(const QStringList& wanted) override { folders = wanted; }
};

TEST(Calendar, ReadsWhileNeededAndTellsWhenItIsOutdated) {
  ScriptedSource source;
  test::TestScheduler clock(at(24, 10));
  Calendar calendar(source, clock);
  int changed = 0;
  int outdated = 0;
  QStringList failures;
  QObject::connect(&calendar, &Calendar::changed, &calendar, [&] { ++changed; });
  QObject::connect(&calendar, &Calendar::outdated, &calendar, [&] { ++outdated; });
  QObject::connect(&calendar, &Calendar::failed, &calendar, [&](const QString& message) { failures << message; });
  calendar.load();
  Q_EMIT source.changed();
  EXPECT_TRUE(source.asked.isEmpty()) << "nobody needs it";
  EXPECT_EQ(calendar.calendarMessage(), u"Enable Calendar access to see your events."_s);

  DockConfiguration config;
  CalendarFolders::add(config, u"/home/ada/team"_s);
  calendar.start(config, {});
  EXPECT_EQ(source.folders, QStringList{u"/home/ada/team"_s});
  EXPECT_TRUE(source.asked.isEmpty()) << "no tile shows it";
  ActiveSets shown;
  shown.families = {familyText(Family::Reminders)};
  calendar.follow(shown);
  calendar.beat(shown);
  ASSERT_EQ(source.asked.size(), 1);
  EXPECT_EQ(source.asked[0].from, QDate(2026, 10, 20).startOfDay());
  EXPECT_EQ(source.asked[0].until, QDate(2027, 2, 2).startOfDay());
  source.loaded({});
  EXPECT_EQ(calendar.calendarMessage(), u"No calendar was found. Add a folder of calendar files."_s);
  EXPECT_EQ(calendar.reminderMessage(), u"No list of reminders was found. Add a folder of calendar files."_s);
  EXPECT_EQ(changed, 1);

  CalendarReading reading;
  reading.problems = {u"A folder is closed."_s, u"A file is torn."_s};
  calendar.load();
  source.loaded(reading);
  EXPECT_EQ(calendar.calendarMessage(), u"A folder is closed. And 1 more."_s) << "and nobody is told to add one";
  EXPECT_EQ(calendar.reminderMessage(), calendar.calendarMessage());
  EXPECT_EQ(changed, 2);

  reading.events = {timed({}, at(25, 9), 30), timed(u"first"_s, at(24, 9), 30)};
  reading.events[1].location = u"https://meet.jit.si/x"_s;
  Reminder reminder;
  reminder.uid = u"r"_s;
  reading.reminders = {reminder};
  reading.hasCalendars = reading.hasReminders = true;
  calendar.load();
  Q_EMIT source.changed();
  EXPECT_EQ(outdated, 0) << "not while something is being read";
  source.loaded(reading);
  EXPECT_EQ(outdated, 1);
  calendar.load();
  source.loaded(reading);
  EXPECT_EQ(changed, 3) << "the same again is no news";
  EXPECT_EQ(calendar.events()[0].meetingLink, u"https://meet.jit.si/x"_s);
  EXPECT_EQ(calendar.events()[1].title, u"Untitled Event"_s);
  EXPECT_TRUE(calendar.calendarMessage().isEmpty() && calendar.reminderMessage().isEmpty());
  EXPECT_EQ(calendar.problem(), u"A folder is closed. And 1 more."_s) << "beside what can be read";

  calendar.setCompleted(calendar.reminders()[0], true);
  EXPECT_TRUE(calendar.reminders()[0].completed);
  EXPECT_EQ(calendar.reminders()[0].completedAt, at(24, 10));
  source.done(u"No."_s);
  EXPECT_FALSE(calendar.reminders()[0].completed);
  EXPECT_EQ(failures, QStringList{u"No."_s});
  Q_EMIT source.changed();
  EXPECT_EQ(outdated, 2);
}

}  // namespace
}  // namespace tarnwick
