#pragma once

#include <QDate>
#include <QDateTime>
#include <QList>
#include <optional>

#include "calendar/ports/CalendarRecords.h"

namespace tarnwick {

/// What calendar tiles and panels show of the events. Pure: the moment is passed in.
struct CalendarModel {
  /// A day of an agenda, with all that touches it: all-day events first, then by their time.
  struct Day {
    QDate date;
    QList<CalendarEvent> events;

    bool operator==(const Day&) const = default;
  };

  /// What touches a day: all-day events first, then by their time.
  static QList<CalendarEvent> onDay(const QList<CalendarEvent>& events, QDate day);
  static QList<CalendarEvent> today(const QList<CalendarEvent>& events, const QDateTime& now);
  /// How many events touch a day.
  static int count(const QList<CalendarEvent>& events, QDate day);
  /// Every one of `days` days from `first` on, those without an event too.
  static QList<Day> agenda(const QList<CalendarEvent>& events, QDate first, int days);

  /// The next `most` that have not ended, one that runs included, by their time. All-day events that have begun already
  /// say little about what comes next and are sorted behind everything else.
  static QList<CalendarEvent> upcoming(const QList<CalendarEvent>& events, const QDateTime& now, int most);
  /// The first of `upcoming`.
  static std::optional<CalendarEvent> next(const QList<CalendarEvent>& events, const QDateTime& now);

  /// The meeting that one would join now: of those that run or begin within `joinAhead` minutes the latest to begin,
  /// else the next one. Only events with a link count.
  static constexpr int joinAhead = 5;
  static std::optional<CalendarEvent> nextMeeting(const QList<CalendarEvent>& events, const QDateTime& now);
  /// The meetings of today that have not ended, by their time.
  static QList<CalendarEvent> meetingsToday(const QList<CalendarEvent>& events, const QDateTime& now);

  /// Whether the event runs.
  static bool isNow(const CalendarEvent& event, const QDateTime& now);
  static bool touches(const CalendarEvent& event, QDate day);
};

/// What reminder tiles and panels show. Pure: the moment is passed in.
struct ReminderModel {
  /// The open ones: overdue, then by what is due first, then those that are never due; within that by priority. Of a
  /// series one alone: the latest that is overdue, or else the next.
  static QList<Reminder> open(const QList<Reminder>& reminders, const QDateTime& now);
  /// The first of `open`.
  static std::optional<Reminder> next(const QList<Reminder>& reminders, const QDateTime& now);
  /// Of the open ones those that are due today or overdue.
  static QList<Reminder> dueToday(const QList<Reminder>& reminders, const QDateTime& now);
  /// Of the open ones those due on one day.
  static QList<Reminder> onDay(const QList<Reminder>& reminders, const QDateTime& now, QDate day);
  /// What was ticked off today, the latest first.
  static QList<Reminder> completedToday(const QList<Reminder>& reminders, const QDateTime& now);

  /// One that is due on a day is overdue once the day has passed.
  static bool isOverdue(const Reminder& reminder, const QDateTime& now);
};

}  // namespace tarnwick
