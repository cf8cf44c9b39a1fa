#include <gtest/gtest.h>

#include <QStringList>

#include "CalendarTexts.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// "24 09:30-10:15 Title", "24-26 Title" for whole days, in their order.
std::string summary(const CalendarText& text) {
  QStringList lines;
  for (const CalendarEvent& event : text.events) {
    const QString when = event.allDay ? event.start.toString(u"dd"_s) + u'-' + event.end.toString(u"dd"_s)
                                      : event.start.toString(u"dd HH:mm"_s) + u'-' + event.end.toString(u"HH:mm"_s);
    lines << event.start.toString(u"MMdd "_s) + when + u' ' + event.title;
  }
  lines.sort();
  for (QString& line : lines) line = line.mid(5);
  return lines.join(u", "_s).toStdString();
}

struct Case {
  const char* what;
  QByteArray text;
  const char* events;
  bool isDamaged = false;
};

void check(std::initializer_list<Case> cases) {
  const auto reader = calendarReader();
  ASSERT_TRUE(reader);
  for (const Case& c : cases) {
    const CalendarText read = reader->read(calendarText(c.text), november());
    EXPECT_EQ(summary(read), c.events) << c.what;
    EXPECT_EQ(read.isDamaged, c.isDamaged) << c.what;
  }
}

TEST(CalendarText, TimesAreThoseOfTheirZones) {
  const QByteArray zone =
      "BEGIN:VTIMEZONE\nTZID:Our Office\nBEGIN:STANDARD\nDTSTART:19700101T000000\nTZOFFSETFROM:+0530\n"
      "TZOFFSETTO:+0530\nEND:STANDARD\nEND:VTIMEZONE\n";
  check({
      {"universal", event("a", "SUMMARY:A\nDTSTART:20261124T083000Z\nDTEND:20261124T091500Z"), "24 09:30-10:15 A"},
      {"floating", event("a", "SUMMARY:A\nDTSTART:20261124T083000\nDURATION:PT1H30M"), "24 08:30-10:00 A"},
      {"far away", event("a", "SUMMARY:A\nDTSTART;TZID=America/New_York:20261130T190000\nDURATION:PT1H"), ""},
      {"a day before there", event("a", "SUMMARY:A\nDTSTART;TZID=America/New_York:20261031T200000\nDURATION:PT1H"),
       "01 01:00-02:00 A"},
      {"begins in one zone and ends in another",
       event("a", "SUMMARY:A\nDTSTART;TZID=Europe/London:20261124T100000\nDTEND;TZID=Asia/Tokyo:20261124T200000"),
       "24 11:00-12:00 A"},
      {"a program's own path before the name",
       event("a", "SUMMARY:A\nDTSTART;TZID=/example.org/20240101_1/Europe/London:20261124T100000\nDURATION:PT1H"),
       "24 11:00-12:00 A"},
      {"another system's name",
       event("a", "SUMMARY:A\nDTSTART;TZID=\"GMT Standard Time\":20261124T100000\nDURATION:PT1H"), "24 11:00-12:00 A"},
      {"told by the calendar itself",
       zone + event("a", "SUMMARY:A\nDTSTART;TZID=Our Office:20261124T133000\nDURATION:PT1H"), "24 09:00-10:00 A"},
      {"a zone that does not exist", event("a", "SUMMARY:A\nDTSTART;TZID=Mars/Olympus:20261124T100000\nDURATION:PT1H"),
       "24 10:00-11:00 A"},
      {"days", event("a", "SUMMARY:A\nDTSTART;VALUE=DATE:20261124"), "24-25 A"},
      {"some days", event("a", "SUMMARY:A\nDTSTART;VALUE=DATE:20261030\nDTEND;VALUE=DATE:20261103"), "30-03 A"},
      {"a day before", event("a", "SUMMARY:A\nDTSTART;VALUE=DATE:20261031\nDTEND;VALUE=DATE:20261101"), ""},
      {"a length that runs in", event("a", "SUMMARY:A\nDTSTART;VALUE=DATE:20261001\nDURATION:P5W"), "01-05 A"},
      {"without a length", event("a", "SUMMARY:A\nDTSTART:20261124T083000Z"), "24 09:30-09:30 A"},
      {"an end before its start", event("a", "SUMMARY:A\nDTSTART:20261124T083000Z\nDTEND:20261124T073000Z"),
       "24 09:30-09:30 A"},
  });
}

TEST(CalendarText, SeriesHappenWhenTheirRulesSay) {
  const QByteArray weekly =
      event("w",
            "SUMMARY:W\nDTSTART;TZID=Europe/Berlin:20260105T090000\nDTEND;TZID=Europe/Berlin:20260105T100000\n"
            "RRULE:FREQ=WEEKLY\nEXDATE;TZID=Europe/Berlin:20261109T090000\nEXDATE:20261130T080000Z");
  const auto rule = [](const char* start, const char* text) {
    return event("r", QByteArray("SUMMARY:R\nDTSTART;VALUE=DATE:") + start + "\nRRULE:" + text);
  };
  check({
      {"over the change of the clock", weekly, "02 09:00-10:00 W, 16 09:00-10:00 W, 23 09:00-10:00 W"},
      {"moved, called off, and moved here",
       weekly + event("w", "SUMMARY:Moved\nRECURRENCE-ID:20261116T080000Z\nDTSTART:20261117T080000Z\nDURATION:PT1H") +
           event("w",
                 "STATUS:CANCELLED\nRECURRENCE-ID;TZID=Europe/Berlin:20261123T090000\n"
                 "DTSTART;TZID=Europe/Berlin:20261123T090000") +
           event("w",
                 "SUMMARY:Late\nRECURRENCE-ID;TZID=Europe/Berlin:20261026T090000\n"
                 "DTSTART;TZID=Europe/Berlin:20261103T090000\nDURATION:PT30M"),
       "02 09:00-10:00 W, 03 09:00-09:30 Late, 17 09:00-10:00 Moved"},
      {"an invitation to one occasion alone",
       event("w", "SUMMARY:Once\nRECURRENCE-ID:20261116T080000Z\nDTSTART:20261117T080000Z\nDURATION:PT1H"),
       "17 09:00-10:00 Once"},
      {"up to a moment that belongs to it",
       event("u",
             "SUMMARY:U\nDTSTART;TZID=America/New_York:20261101T200000\nDURATION:PT1H\n"
             "RRULE:FREQ=DAILY;UNTIL=20261104T010000Z"),
       "02 02:00-03:00 U, 03 02:00-03:00 U, 04 02:00-03:00 U"},
      {"up to a day", event("u", "SUMMARY:U\nDTSTART:20261101T200000\nRRULE:FREQ=DAILY;UNTIL=20261102"),
       "01 20:00-20:00 U, 02 20:00-20:00 U"},
      {"counted to the end", rule("20261023", "FREQ=DAILY;COUNT=11"), "01-02 R, 02-03 R"},
      {"counted, on several days", rule("20261026", "FREQ=WEEKLY;BYDAY=MO,TH;COUNT=4"), "02-03 R, 05-06 R"},
      {"over before", rule("20200101", "FREQ=WEEKLY;COUNT=200"), ""},
      {"every third week for years", rule("20100104", "FREQ=WEEKLY;INTERVAL=3;BYDAY=MO,FR"),
       "09-10 R, 13-14 R, 30-01 R"},
      {"every fifth day for years", rule("20100101", "FREQ=DAILY;INTERVAL=5"),
       "03-04 R, 08-09 R, 13-14 R, 18-19 R, "
       "23-24 R, 28-29 R"},
      {"every other month", rule("20110112", "FREQ=MONTHLY;INTERVAL=2;BYDAY=2WE"), "11-12 R"},
      {"not in this month", rule("20111212", "FREQ=MONTHLY;INTERVAL=2;BYMONTHDAY=12"), ""},
      {"the last working day", rule("20150130", "FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-1"), "30-01 R"},
      {"every third year", rule("20111105", "FREQ=YEARLY;INTERVAL=3"), "05-06 R"},
      {"further dates, with a day taken out",
       event("d",
             "SUMMARY:D\nDTSTART:20261003T080000Z\nDURATION:PT1H\nRDATE:20261104T080000Z,20261105T080000Z\n"
             "RDATE;VALUE=PERIOD:20261106T080000Z/PT3H\nEXDATE;VALUE=DATE:20261105"),
       "04 09:00-10:00 D, 06 09:00-10:00 D"},
      {"a date that no year has", rule("20261102", "FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30"), "02-03 R"},
      {"twice a day", event("h", "SUMMARY:H\nDTSTART:20261130T000000Z\nRRULE:FREQ=HOURLY;INTERVAL=12;COUNT=9"),
       "30 01:00-01:00 H, 30 13:00-13:00 H"},
      {"by the minute", rule("20261102", "FREQ=MINUTELY;BYMONTH=2;BYMONTHDAY=30"), "02-03 R"},
  });
}

TEST(CalendarText, DaysAreCountedInDaysWhereTheClocksChange) {
  // The clocks go forward on the 29th of March: four days of 24 hours and one of 23.
  const QByteArray series =
      event("d", "SUMMARY:D\nDTSTART;VALUE=DATE:20260327\nDTEND;VALUE=DATE:20260401\nRRULE:FREQ=DAILY;COUNT=2");
  const QDate after(2026, 4, 1);
  const CalendarRange day{after.startOfDay(), after.addDays(1).startOfDay()};
  const auto reader = calendarReader();
  ASSERT_TRUE(reader);
  EXPECT_EQ(summary(reader->read(calendarText(series), day)), "28-02 D");
}

TEST(CalendarText, WhatIsBrokenIsLeftOut) {
  const QByteArray good = event("g", "SUMMARY:G\nDTSTART:20261124T083000Z");
  check({
      {"nothing", "", ""},
      {"no start", event("b", "SUMMARY:B") + good, "24 09:30-09:30 G", true},
      {"a start that is none", event("b", "SUMMARY:B\nDTSTART:tomorrow") + good, "24 09:30-09:30 G", true},
      {"a day that no month has", event("b", "SUMMARY:B\nDTSTART;VALUE=DATE:20261131") + good, "24 09:30-09:30 G",
       true},
      {"a rule that is none", event("b", "SUMMARY:B\nDTSTART:20261124T083000Z\nRRULE:FREQ=OFTEN") + good,
       "24 09:30-09:30 B, 24 09:30-09:30 G"},
      {"a rule that ends on no day of the calendar",
       event("b", "SUMMARY:B\nDTSTART;VALUE=DATE:20261124\nRRULE:FREQ=DAILY;UNTIL=40522402"), "24-25 B"},
      {"an exception without its occasion", event("b", "RECURRENCE-ID:never\nDTSTART:20261124T083000Z") + good,
       "24 09:30-09:30 G", true},
      {"cut off", good + "BEGIN:VEVENT\nUID:b\nDTSTART:20261124T083000Z\nSUMM", "24 09:30-09:30 G", true},
      {"cut off and begun again", "BEGIN:VEVENT\nUID:b\nBEGIN:VCALENDAR\n" + good, "24 09:30-09:30 G", true},
      {"called off", event("b", "SUMMARY:B\nSTATUS:CANCELLED\nDTSTART:20261124T083000Z"), ""},
      {"ends without beginnings", "END:VEVENT\nEND:VALARM\n" + good, "24 09:30-09:30 G", true},
  });
}

TEST(CalendarText, EventsCarryWhatTheirTilesShow) {
  const auto text = calendarReader()->read(
      "BEGIN:VCALENDAR\nX-WR-CALNAME:Work\nX-APPLE-CALENDAR-COLOR:#FF8800FF\n" +
          event("long-identity-that-is-folded-right-in-the-middle-of-nowhere-because-it-is-l\n ong",
                "SUMMARY:Gr\xc3\n \xbc\xc3\x9f"
                "e\\, alle\\nzusammen\nLOCATION:Room\\; left\nURL:https://example.org/e\n"
                "STATUS:TENTATIVE\nATTENDEE:mailto:a@example.org\nATTENDEE:mailto:b@example.org\n"
                "X-GOOGLE-CONFERENCE:https://meet.google.com/abc\nDTSTART:20261124T083000Z\n"
                "BEGIN:VALARM\nACTION:DISPLAY\nDESCRIPTION:Alarm\nDTSTART:20200101T000000Z\nEND:VALARM") +
          "END:VCALENDAR\n",
      november());
  EXPECT_EQ(text.name, u"Work"_s);
  EXPECT_EQ(text.colour, u"#FF8800FF"_s);
  EXPECT_TRUE(text.isSingle && text.hasEvents && !text.hasReminders && text.isCalendar);
  ASSERT_EQ(text.events.size(), 1);
  const CalendarEvent& read = text.events.first();
  EXPECT_EQ(read.title, u"Grüße, alle zusammen"_s);
  EXPECT_EQ(read.location, u"Room; left"_s);
  EXPECT_EQ(read.url, u"https://example.org/e"_s);
  EXPECT_EQ(read.conferences, QStringList{u"https://meet.google.com/abc"_s});
  EXPECT_EQ(read.attendees, 2);
  EXPECT_TRUE(read.tentative);
  EXPECT_EQ(read.notes, QString());
}

TEST(CalendarText, RemindersAreOpenOrDoneLately) {
  const auto reader = calendarReader();
  const QByteArray series = todo("s",
                                 "SUMMARY:S\nDTSTART;TZID=Europe/Berlin:20261102T080000\n"
                                 "DUE;TZID=Europe/Berlin:20261102T090000\nRRULE:FREQ=WEEKLY;COUNT=3");
  const struct {
    const char* what;
    QByteArray text;
    const char* reminders;
  } cases[] = {
      {"no date", todo("a", "SUMMARY:A"), "A"},
      {"long overdue", todo("a", "SUMMARY:A\nDUE:20200101T080000Z\nSTATUS:IN-PROCESS"), "A 2020-01-01 09:00"},
      {"a day", todo("a", "SUMMARY:A\nDUE;VALUE=DATE:20261124"), "A 2026-11-24 day"},
      {"begins and takes a while", todo("a", "SUMMARY:A\nDTSTART:20261124T080000Z\nDURATION:PT1H"),
       "A 2026-11-24 10:00"},
      {"done this month", todo("a", "SUMMARY:A\nSTATUS:COMPLETED\nCOMPLETED:20261110T080000Z"), "A done"},
      {"done long ago", todo("a", "SUMMARY:A\nSTATUS:COMPLETED\nCOMPLETED:20261010T080000Z"), ""},
      {"done without a state", todo("a", "SUMMARY:A\nCOMPLETED:20261110T080000Z"), "A done"},
      {"called off", todo("a", "SUMMARY:A\nSTATUS:CANCELLED"), ""},
      {"a series", series,
       "S 2026-11-02 09:00 [20261102T080000], S 2026-11-09 09:00 [20261109T080000], "
       "S 2026-11-16 09:00 [20261116T080000]"},
      {"one of it done",
       series + todo("s",
                     "SUMMARY:S\nRECURRENCE-ID;TZID=Europe/Berlin:20261109T080000\nSTATUS:COMPLETED\n"
                     "COMPLETED:20261109T100000Z"),
       "S done [20261109T080000], S 2026-11-02 09:00 [20261102T080000], S 2026-11-16 09:00 [20261116T080000]"},
      {"a series done as a whole",
       todo("s", "SUMMARY:S\nDUE:20261102T080000Z\nRRULE:FREQ=DAILY\nSTATUS:COMPLETED\nCOMPLETED:20261102T080000Z"),
       "S 2026-11-02 09:00 done"},
  };
  for (const auto& c : cases) {
    QStringList summary;
    for (const Reminder& reminder : reader->read(calendarText(c.text), november()).reminders) {
      QString line = reminder.title;
      if (reminder.due)
        line += reminder.due->toString(reminder.dueAllDay ? u" yyyy-MM-dd 'day'"_s : u" yyyy-MM-dd HH:mm"_s);
      if (reminder.completed) line += u" done"_s;
      if (!reminder.occasion.isEmpty()) line += " ["_L1 + reminder.occasion + u']';
      summary << line;
    }
    EXPECT_EQ(summary.join(u", "_s).toStdString(), c.reminders) << c.what;
  }
}

}  // namespace
}  // namespace tarnwick
