#include "views/families/calendar/CalendarRoom.h"

#include <QTimeZone>
#include <array>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct EventRow {
  int day;  ///< From today on.
  QTime from;
  QTime until;
  const char* title;
  const char* place;
  const char* colour;
  bool meets;
  int guests;
};

constexpr const char* kWork = "#FF6A66";
constexpr const char* kHome = "#38CB80";
constexpr const char* kTeam = "#5B97FF";

CalendarEvent event(const QDateTime& now, const EventRow& row) {
  CalendarEvent event;
  const QDate date = now.date().addDays(row.day);
  event.uid = QString::fromLatin1(row.title) + date.toString(Qt::ISODate);
  event.title = QString::fromUtf8(row.title);
  event.start = QDateTime(date, row.from, now.timeZone());
  event.end = QDateTime(date, row.until, now.timeZone());
  event.location = QString::fromUtf8(row.place);
  event.colour = QString::fromLatin1(row.colour);
  event.attendees = row.guests;
  if (row.meets) event.meetingLink = u"https://meet.example.org/"_s + QString::number(row.day);
  return event;
}

QList<CalendarEvent> events(const QDateTime& now) {
  const std::array rows = {
      EventRow{-21, {9, 0}, {10, 0}, "Planning", "Room Alder", kWork, false, 0},
      EventRow{-19, {15, 0}, {16, 0}, "Dentist", "", kHome, false, 0},
      EventRow{-14, {9, 0}, {10, 0}, "Planning", "Room Alder", kWork, false, 0},
      EventRow{-14, {14, 0}, {15, 0}, "Interview", "", kTeam, false, 0},
      EventRow{-12, {18, 0}, {21, 0}, "Concert", "Old Mill", kHome, false, 0},
      EventRow{-7, {9, 0}, {10, 0}, "Planning", "Room Alder", kWork, false, 0},
      EventRow{-5, {10, 0}, {11, 0}, "Retrospective", "", kTeam, false, 0},
      EventRow{-5, {19, 0}, {20, 0}, "Choir", "", kHome, false, 0},
      EventRow{-1, {9, 0}, {10, 0}, "Planning", "Room Alder", kWork, false, 0},
      EventRow{0, {9, 0}, {9, 15}, "Stand-up", "Video call", kTeam, true, 8},
      EventRow{0, {11, 0}, {11, 45}, "Design review", "Room Alder", kWork, true, 5},
      EventRow{0, {13, 30}, {14, 30}, "Lunch with Ines", "Old Mill", kHome, false, 0},
      EventRow{0, {16, 0}, {17, 0}, "Sprint planning", "Video call", kTeam, true, 8},
      EventRow{2, {9, 30}, {10, 0}, "Dependency update", "", kTeam, false, 0},
      EventRow{3, {12, 0}, {13, 0}, "Team lunch", "Old Mill", kWork, false, 0},
      EventRow{3, {17, 20}, {19, 40}, "Train to Kendal", "", kHome, false, 0},
  };
  QList<CalendarEvent> events;
  for (const EventRow& row : rows) events << event(now, row);
  return events;
}

Reminder reminder(const char* title, const QDateTime& due, bool allDay, bool completed = false) {
  Reminder reminder;
  reminder.uid = reminder.title = QString::fromUtf8(title);
  reminder.due = due;
  reminder.dueAllDay = allDay;
  reminder.completed = completed;
  if (completed) reminder.completedAt = due;
  reminder.calendar = u"Home"_s;
  reminder.canComplete = true;
  return reminder;
}

QList<Reminder> reminders(const QDateTime& now) {
  const auto at = [&](int day, const QTime& time) { return QDateTime(now.date().addDays(day), time, now.timeZone()); };
  return {reminder("Call the dentist", at(0, {14, 0}), false), reminder("Send invoice", at(0, {16, 30}), false),
          reminder("Water plants", at(3, {}), true),           reminder("Renew library card", at(9, {}), true),
          reminder("Buy stamps", at(0, {9, 10}), false, true), reminder("Reply to Sam", at(0, {9, 40}), false, true)};
}

}  // namespace

std::shared_ptr<const CalendarDigest> calendarFixture(const QDateTime& now) {
  return std::make_shared<const CalendarDigest>(CalendarDigest::make(events(now), reminders(now), now));
}

}  // namespace tarnwick
