#pragma once

#include <QHash>
#include <QObject>
#include <QString>
#include <memory>
#include <optional>

#include "calendar/CalendarModel.h"

namespace tarnwick {

class Calendar;

/// The user's calendars and reminders at one minute, prepared for everything that shows them, so that a tick of the
/// dock costs no pass over all events.
struct CalendarDigest {
  QList<CalendarEvent> events;
  QHash<QDate, int> counts;  ///< How many events touch a day; a day without one is absent.
  QList<CalendarEvent> today;
  QList<CalendarEvent> upcoming;
  QList<CalendarEvent> meetingsToday;
  std::optional<CalendarEvent> nextMeeting;

  QList<Reminder> reminders;  ///< The open ones, in the order of ReminderModel.
  QList<Reminder> dueToday;   ///< Overdue ones included.
  QList<Reminder> completedToday;

  /// Finished sentences for what cannot be shown; empty while it can.
  QString calendarMessage;
  QString reminderMessage;
  QString problem;  ///< What of the calendars was left out and why; empty where nothing was.

  static constexpr int kMostUpcoming = 8;
  static CalendarDigest make(const QList<CalendarEvent>& events, const QList<Reminder>& reminders,
                             const QDateTime& now);
};

/// The digest of a calendar, made anew when the calendar changed or the minute went by. Borrows the calendar.
class CalendarDigests final : public QObject {
 public:
  explicit CalendarDigests(const Calendar& calendar);

  std::shared_ptr<const CalendarDigest> at(const QDateTime& now);

 private:
  const Calendar& calendar_;
  qint64 minute_ = 0;
  std::shared_ptr<const CalendarDigest> digest_;
};

}  // namespace tarnwick
