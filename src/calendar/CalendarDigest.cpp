#include "calendar/CalendarDigest.h"

#include <algorithm>

#include "calendar/Calendar.h"

namespace tarnwick {

namespace {

constexpr qint64 kMinute = 60;
constexpr qint64 kLongest = 400;  ///< Days that one event may touch before it stops being counted.

QHash<QDate, int> countsOf(const QList<CalendarEvent>& events) {
  QHash<QDate, int> counts;
  for (const CalendarEvent& event : events) {
    const QDate first = event.start.date();
    const QDate last = event.end > event.start ? event.end.addMSecs(-1).date() : first;
    const qint64 days = std::min(first.daysTo(last), kLongest);
    for (qint64 day = 0; day <= days; ++day) ++counts[first.addDays(day)];
  }
  return counts;
}

}  // namespace

CalendarDigest CalendarDigest::make(const QList<CalendarEvent>& events, const QList<Reminder>& reminders,
                                    const QDateTime& now) {
  CalendarDigest digest;
  digest.events = events;
  digest.counts = countsOf(events);
  digest.today = CalendarModel::today(events, now);
  digest.upcoming = CalendarModel::upcoming(events, now, kMostUpcoming);
  digest.meetingsToday = CalendarModel::meetingsToday(events, now);
  digest.nextMeeting = CalendarModel::nextMeeting(events, now);
  digest.reminders = ReminderModel::open(reminders, now);
  digest.dueToday = ReminderModel::dueToday(reminders, now);
  digest.completedToday = ReminderModel::completedToday(reminders, now);
  return digest;
}

CalendarDigests::CalendarDigests(const Calendar& calendar) : calendar_(calendar) {
  connect(&calendar_, &Calendar::changed, this, [this] { digest_.reset(); });
}

std::shared_ptr<const CalendarDigest> CalendarDigests::at(const QDateTime& now) {
  const qint64 minute = now.toSecsSinceEpoch() / kMinute;
  if (digest_ && minute == minute_) return digest_;
  CalendarDigest digest = CalendarDigest::make(calendar_.events(), calendar_.reminders(), now);
  digest.calendarMessage = calendar_.calendarMessage();
  digest.reminderMessage = calendar_.reminderMessage();
  digest.problem = calendar_.problem();
  minute_ = minute;
  digest_ = std::make_shared<const CalendarDigest>(std::move(digest));
  return digest_;
}

}  // namespace tarnwick
