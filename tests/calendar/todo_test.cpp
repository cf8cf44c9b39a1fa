#include <gtest/gtest.h>

#include <QTimeZone>

#include "CalendarTexts.h"
#include "platform/ical/TodoEdit.h"
#include "support/FileTest.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

TodoEdit edit(const QString& occasion = {}, bool completed = true) {
  return {.uid = u"t"_s,
          .occasion = occasion,
          .completed = completed,
          .at = QDateTime(QDate(2026, 11, 24), QTime(11, 5, 9), QTimeZone("Europe/Berlin"))};
}

const QByteArray kAlarm = "BEGIN:VALARM\nTRIGGER:-PT5M\nSTATUS:OWN\nEND:VALARM\n";
const QByteArray kDone = "STATUS:COMPLETED\nCOMPLETED:20261124T100509Z\n";
const QByteArray kWhole = "PERCENT-COMPLETE:100\n";

TEST(TodoEdit, ChangesTheLinesThatSayHowFarItIsAndNoOtherByte) {
  const QByteArray head = "BEGIN:VTODO\nUID:t\nSUMMARY:Water the pl\n ants\nX-ODD;P=\"a:b\":  kept \n";
  const QByteArray series =
      "BEGIN:VTODO\nUID:t\nDTSTART;TZID=\"Europe/Berlin\":20261101T080000\n"
      "DUE;TZID=Europe/Berlin:20261101T093000\nRRULE:FREQ=DAILY;\n COUNT=40\nSUMMARY:S\n";
  const QByteArray once =
      "BEGIN:VTODO\nUID:t\nDTSTART;TZID=\"Europe/Berlin\":20261124T080000\n"
      "DUE;TZID=Europe/Berlin:20261124T093000\nSUMMARY:S\n"
      "RECURRENCE-ID;TZID=\"Europe/Berlin\":20261124T080000\n";
  const QByteArray end = "END:VTODO\n";
  const struct {
    const char* what;
    TodoEdit edit;
    QByteArray before, after;
  } cases[] = {
      {"nothing said yet", edit(), head + kAlarm + end, head + kAlarm + kDone + end},
      {"something said, folded", edit(), head + "STATUS:NEEDS-\n ACTION\nPERCENT-COMPLETE:50\n" + kAlarm + end,
       head + "STATUS:COMPLETED\nPERCENT-COMPLETE:100\n" + kAlarm + "COMPLETED:20261124T100509Z\n" + end},
      {"taken away again", edit({}, false), head + kDone + kWhole + kAlarm + end,
       head + "STATUS:NEEDS-ACTION\n" + kAlarm + end},
      {"taken away from what is half done", edit({}, false), head + kDone + "PERCENT-COMPLETE:50\n" + end,
       head + "STATUS:NEEDS-ACTION\nPERCENT-COMPLETE:50\n" + end},
      {"one of a series", edit(u"20261124T080000"_s), series + kAlarm + end,
       series + kAlarm + end + once + kDone + end},
      {"one that is an exception already", edit(u"20261124T080000"_s),
       series + end + once + "STATUS:IN-PROCESS\n" + end, series + end + once + kDone + end},
      {"taken away from one of a series", edit(u"20261124T080000"_s, false), series + end + once + kDone + kWhole + end,
       series + end + once + "STATUS:NEEDS-ACTION\n" + end},
      {"by the day", edit(u"20261124"_s), "BEGIN:VTODO\nUID:t\nDUE;VALUE=DATE:20261101\nRRULE:FREQ=DAILY\n" + end,
       "BEGIN:VTODO\nUID:t\nDUE;VALUE=DATE:20261101\nRRULE:FREQ=DAILY\n" + end +
           "BEGIN:VTODO\nUID:t\nDUE;VALUE=DATE:20261124\nRECURRENCE-ID;VALUE=DATE:20261124\n" + kDone + end},
      {"in universal time", edit(u"20261124T080000Z"_s),
       "BEGIN:VTODO\nUID:t\nDUE:20261101T080000Z\nRRULE:FREQ=DAILY\n" + end,
       "BEGIN:VTODO\nUID:t\nDUE:20261101T080000Z\nRRULE:FREQ=DAILY\n" + end +
           "BEGIN:VTODO\nUID:t\nDUE:20261124T080000Z\nRECURRENCE-ID:20261124T080000Z\n" + kDone + end},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.edit.apply(calendarText(c.before)), calendarText(c.after)) << c.what;
    const QByteArray plain = "BEGIN:VCALENDAR\n" + c.before + "END:VCALENDAR";
    EXPECT_EQ(c.edit.apply(plain), "BEGIN:VCALENDAR\n" + c.after + "END:VCALENDAR") << c.what << ", other line ends";
  }
}

TEST(TodoEdit, FindsAReminderByWhateverIdentityItsFileGivesIt) {
  const auto reader = calendarReader();
  ASSERT_TRUE(reader);
  const QByteArray end = "SUMMARY:T\\, U\n\t\\; V\nEND:VTODO\n";
  const struct {
    const char* what;
    QByteArray uid;
  } cases[] = {
      {"escapes", R"(UID:a\,b\;c\\d\ne)"},
      {"no escapes where some belong", "UID:a,b;c:d"},
      {"very long", "UID:" + QByteArray(3000, 'x') + R"(\,y)"},
      {"folded in the middle of an escape and of a letter", "UID:a\\\n ,b\n\t\xC3\n \xA4"},
      {"folded after the name", "UID:\n  a"},
      {"with parameters", "uid;X-A=\"b:c;d\":e"},
      {"blanks around it", "UID: a \t"},
      {"bytes that are no text", "UID:\xFF\xFE"},
  };
  for (const auto& c : cases) {
    const QByteArray head = "BEGIN:VTODO\n" + c.uid + "\n";
    for (const bool isPlain : {false, true}) {
      const auto file = [&](const QByteArray& part) {
        return isPlain ? "BEGIN:VCALENDAR\n" + part + "END:VCALENDAR\n" : calendarText(part);
      };
      const CalendarText text = reader->read(file(head + end), november());
      ASSERT_EQ(text.reminders.size(), 1) << c.what;
      EXPECT_TRUE(text.isSingle) << c.what;
      TodoEdit ticked = edit();
      ticked.uid = text.reminders.first().uid;
      QByteArray after = head + end;
      after.insert(after.indexOf("END:"), kDone);
      QByteArray done;
      EXPECT_EQ(failureOf([&] { done = ticked.apply(file(head + end)); }), "") << c.what;
      EXPECT_EQ(done, file(after)) << c.what;
    }
  }
}

TEST(TodoEdit, RefusesWhatItCouldSpoil) {
  const QByteArray own = todo("t", "SUMMARY:T");
  const char* const shared = "The reminder shares its file with others and cannot be changed here.";
  const char* const gone = "The reminder is no longer in its file.";
  const struct {
    const char* what;
    QByteArray text;
    const char* failure;
  } cases[] = {
      {"another reminder", own + todo("u", "SUMMARY:U"), shared},
      {"an event", own + event("t", "DTSTART:20261124T083000Z"), shared},
      {"nothing", "", gone},
      {"cut off", "BEGIN:VTODO\nUID:t\n", gone},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(failureOf([&] { edit().apply(calendarText(c.text)); }), c.failure) << c.what;
  }
}

}  // namespace
}  // namespace tarnwick
