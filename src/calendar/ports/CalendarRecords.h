#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace tarnwick {

/// One event on one occasion; a recurring event gives one for each.
struct CalendarEvent {
  QString uid;  ///< The same for all occasions of a recurring event.
  QString title;
  QDateTime start;  ///< Local time. An all-day event begins with its day, wherever the user is.
  QDateTime end;    ///< Local time, exclusive; the same as `start` for an event without a length.
  bool allDay = false;
  QString location;
  QString notes;  ///< As its author wrote it, possibly with HTML; bounded in length.
  QString calendarName;
  QString colour;           ///< "#rrggbb"; empty where its calendar has none.
  QString meetingLink;      ///< Where one can join it; filled in by Calendar, not by the source.
  QStringList conferences;  ///< Addresses that the calendar itself gives for joining.
  int attendees = 0;
  QString url;
  bool tentative = false;

  bool operator==(const CalendarEvent&) const = default;
};

/// One thing to do; a recurring one gives one for each occasion.
struct Reminder {
  QString uid;  ///< In the words of its file, however long and with their escapes.
  QString title;
  std::optional<QDateTime> due;  ///< Local time; the start of the day for one that is due on a day.
  bool dueAllDay = false;        ///< Whether it is due on a day, not at a time.
  bool completed = false;
  std::optional<QDateTime> completedAt;  ///< Local time, where it is known.
  int priority = 0;                      ///< 1 is the highest, 9 the lowest; 0 for none.
  QString calendar;
  QString colour;
  QString filePath;
  QString occasion;          ///< For one of a series: which of them, in the words of its file. Else empty.
  bool canComplete = false;  ///< Whether the user may tick it off here.

  bool operator==(const Reminder&) const = default;
};

/// From `from` on, up to but without `until`.
struct CalendarRange {
  QDateTime from;
  QDateTime until;

  bool operator==(const CalendarRange&) const = default;
};

/// What all calendars hold within a range.
struct CalendarReading {
  QList<CalendarEvent> events;  ///< All that touch the range, in no particular order.
  /// Every open one that stands alone; of a series those within the range; of the completed ones those of the range.
  QList<Reminder> reminders;
  /// Whether there is any calendar or list at all.
  bool hasCalendars = false;
  bool hasReminders = false;
  /// Finished sentences about files that were left out.
  QStringList problems;

  bool operator==(const CalendarReading&) const = default;
};

}  // namespace tarnwick
