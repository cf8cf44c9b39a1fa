#include <sys/stat.h>

#include <QTimeZone>

#include "CalendarTexts.h"
#include "platform/ical/ICalendarFiles.h"
#include "support/FileTest.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// The folder of each test stands for the user's home.
class CalendarFilesTest : public FolderTest {
 protected:
  CalendarPlaces places() const {
    return {.evolutionData = at(u"data/evolution"_s),
            .evolutionSources = at(u"config/evolution/sources"_s),
            .folders = {at(u".calendars"_s), at(u"data/calendars"_s)}};
  }
  void putEvent(const QString& path, const QByteArray& title, const QByteArray& before = {}) const {
    put(path, calendarText(before + event(title, "SUMMARY:" + title + "\nDTSTART:20261124T083000Z")));
  }
  CalendarReading load() {
    std::optional<CalendarReading> read;
    files_->load(november(), files_.get(), [&](const CalendarReading& reading) { read = reading; });
    EXPECT_TRUE(waitFor([&] { return read.has_value(); }));
    return read.value_or(CalendarReading());
  }
  /// Titles with the calendars that they are in.
  static std::string summary(const CalendarReading& reading) {
    QStringList lines;
    for (const auto& event : reading.events) lines << event.title + u'@' + event.calendarName + event.colour;
    for (const auto& reminder : reading.reminders) {
      lines << reminder.title + u'@' + reminder.calendar + reminder.colour +
                   (reminder.canComplete ? u"!"_s : QString());
    }
    lines.sort();
    return lines.join(u", "_s).toStdString();
  }
  bool waitForChange() {
    return waitFor(scheduler_, [&] { return changes_ > 0; });
  }
  void start() {
    files_ = std::make_unique<ICalendarFiles>(scheduler_, places());
    QObject::connect(files_.get(), &CalendarSource::changed, files_.get(), [this] { ++changes_; });
  }

  test::TestScheduler scheduler_;
  std::unique_ptr<ICalendarFiles> files_;
  int changes_ = 0;
};

TEST_F(CalendarFilesTest, AreFoundWhereDesktopsKeepThem) {
  putEvent(u"data/evolution/calendar/system/calendar.ics"_s, "E");
  putEvent(u"data/evolution/calendar/abc/calendar.ics"_s, "F");
  put(u"config/evolution/sources/abc.source"_s,
      "[Data Source]\nDisplayName=Caf\xc3\xa9\n\n[Calendar]\nBackendName=local\nColor=#1a2b3c\n");
  put(u"data/evolution/tasks/system/tasks.ics"_s, calendarText(todo("t", "SUMMARY:T")));
  putEvent(u".calendars/one.ics"_s, "O");
  put(u".calendars/notes.txt"_s, "no calendar");
  putEvent(u".calendars/.hidden.ics"_s, "H");
  put(u"data/calendars/me/home/displayname"_s, "Home\n");
  put(u"data/calendars/me/home/color"_s, "#f0aC\n");
  put(u"data/calendars/me/home/1.ics"_s, calendarText(todo("v", "SUMMARY:V")));
  put(u"data/calendars/me/home/2.ics"_s, calendarText(todo("w", "SUMMARY:W") + todo("x", "SUMMARY:X")));
  putEvent(u"data/calendars/plain/deeper/3.ICS"_s, "P", "X-WR-CALNAME:Own name\nCOLOR:#123456\n");
  ASSERT_EQ(::symlink(encoded(u"data/calendars"_s).constData(), encoded(u"data/calendars/loop"_s).constData()), 0);
  start();
  const CalendarReading reading = load();
  EXPECT_EQ(summary(reading),
            "E@Personal, F@Café#1a2b3c, O@.calendars, P@Own name#123456, T@Personal, V@Home!, W@Home, X@Home");
  EXPECT_TRUE(reading.hasCalendars && reading.hasReminders);
  EXPECT_TRUE(reading.problems.isEmpty()) << reading.problems.join(u' ').toStdString();
}

TEST_F(CalendarFilesTest, ThatAreBrokenAreNamedAndTheRestIsShown) {
  putEvent(u".calendars/good.ics"_s, "G");
  put(u".calendars/empty.ics"_s, "");
  put(u".calendars/picture.ics"_s, QByteArray("\x89PNG\0\0\n\xff\xfe", 9));
  put(u".calendars/torn.ics"_s, calendarText(event("a", "SUMMARY:A\nDTSTART:20261124T083000Z")).chopped(30));
  put(u".calendars/secret.ics"_s, calendarText(event("a", "DTSTART:20261124T083000Z")));
  put(u".calendars/closed/a.ics"_s, calendarText(event("a", "DTSTART:20261124T083000Z")));
  ASSERT_EQ(::mkfifo(encoded(u".calendars/pipe.ics"_s).constData(), 0600), 0);
  setMode(u".calendars/secret.ics"_s, 0);
  setMode(u".calendars/closed"_s, 0);
  const AsPlainUser user(folder_.path());
  start();
  const CalendarReading reading = load();
  EXPECT_EQ(summary(reading), "G@.calendars");
  QStringList problems = reading.problems;
  problems.sort();
  EXPECT_EQ(problems, (QStringList{u"Parts of the calendar file “torn.ics” could not be understood."_s,
                                   u"The calendar folder “closed” could not be read: Permission denied."_s,
                                   u"The file “picture.ics” is not a calendar."_s,
                                   u"The file “secret.ics” could not be read: Permission denied."_s}));
}

TEST_F(CalendarFilesTest, AreWatchedFromBeforeTheyExist) {
  start();
  EXPECT_EQ(load(), CalendarReading());
  const struct {
    const char* what;
    std::function<void()> change;
    const char* summary;
  } steps[] = {
      {"the first folder appears", [&] { putEvent(u"data/calendars/new/a.ics"_s, "A"); }, "A@new"},
      {"a file beside it", [&] { putEvent(u"data/calendars/new/b.ics"_s, "B"); }, "A@new, B@new"},
      {"written in place", [&] { putEvent(u"data/calendars/new/a.ics"_s, "C"); }, "B@new, C@new"},
      {"renamed over another",
       [&] {
         QFile::remove(at(u"data/calendars/new/b.ics"_s)),
             QFile::rename(at(u"data/calendars/new/a.ics"_s), at(u"data/calendars/new/b.ics"_s));
       },
       "C@new"},
      {"a folder of the user's",
       [&] {
         putEvent(u"elsewhere/d.ics"_s, "D");
         files_->setFolders({at(u"elsewhere"_s)});
       },
       "C@new, D@elsewhere"},
      {"all is gone", [&] { QDir(at(u"data/calendars"_s)).removeRecursively(); }, "D@elsewhere"},
  };
  for (const auto& step : steps) {
    changes_ = 0;
    step.change();
    // A change may be reported in pieces.
    EXPECT_TRUE(waitFor(scheduler_, [&] { return changes_ > 0 && summary(load()) == step.summary; }))
        << step.what << ": " << summary(load());
  }
}

TEST_F(CalendarFilesTest, RemindersAreTickedOffInTheirFiles) {
  const QDateTime now(QDate(2026, 11, 24), QTime(9, 0), QTimeZone::utc());
  put(u".calendars/t.ics"_s, calendarText(todo("t", "SUMMARY:T")));
  put(u"data/evolution/tasks/system/tasks.ics"_s, calendarText(todo("e", "SUMMARY:E")));
  setMode(u".calendars/t.ics"_s, 0640);
  start();
  const std::string evolutions = content(u"data/evolution/tasks/system/tasks.ics"_s);
  for (const Reminder& reminder : load().reminders) {
    std::optional<QString> failure;
    changes_ = 0;
    files_->setCompleted(reminder, true, now, files_.get(), [&](const QString& summary) { failure = summary; });
    ASSERT_TRUE(waitFor([&] { return failure.has_value(); }));
    if (reminder.title == "E"_L1) {
      EXPECT_EQ(*failure, u"This list belongs to another app. Change the reminder there."_s);
    } else {
      EXPECT_EQ(*failure, QString());
      EXPECT_TRUE(waitForChange());
    }
  }
  EXPECT_EQ(content(u".calendars/t.ics"_s),
            calendarText(todo("t", "SUMMARY:T\nSTATUS:COMPLETED\nCOMPLETED:20261124T090000Z")).toStdString());
  EXPECT_EQ(mode(u".calendars/t.ics"_s), 0640u);
  EXPECT_EQ(content(u"data/evolution/tasks/system/tasks.ics"_s), evolutions);
  for (const Reminder& reminder : load().reminders) EXPECT_EQ(reminder.completed, reminder.title == "T"_L1);

  // Gone since it was shown; and its owner may go before the answer comes.
  const Reminder shown = load().reminders.last();
  QFile::remove(shown.filePath);
  std::optional<QString> failure;
  files_->setCompleted(shown, false, now, files_.get(), [&](const QString& summary) { failure = summary; });
  ASSERT_TRUE(waitFor([&] { return failure.has_value(); }));
  EXPECT_FALSE(failure->isEmpty());
  files_->load(november(), files_.get(), [](const CalendarReading&) { FAIL(); });
  files_.reset();
}

}  // namespace
}  // namespace tarnwick
