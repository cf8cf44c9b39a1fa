#include "calendar/CalendarModel.h"

#include <QHash>
#include <algorithm>
#include <tuple>

namespace tarnwick {
namespace {

constexpr qint64 kSecondsInMinute = 60;

template <class List, class Test>
List those(const List& all, Test test) {
  List found;
  std::copy_if(all.begin(), all.end(), std::back_inserter(found), test);
  return found;
}

bool hasEnded(const CalendarEvent& event, const QDateTime& now) {
  // An event without a length is over with its moment, not before it.
  return event.end > event.start ? event.end <= now : event.start < now;
}

auto dayOrder(const CalendarEvent& event) {
  return std::make_tuple(!event.allDay, event.start.toMSecsSinceEpoch(), event.end.toMSecsSinceEpoch(), event.title,
                         event.uid);
}

auto timeOrder(const CalendarEvent& event) {
  return std::make_tuple(event.start.toMSecsSinceEpoch(), event.allDay, event.end.toMSecsSinceEpoch(), event.title,
                         event.uid);
}

template <class Order>
QList<CalendarEvent> sorted(QList<CalendarEvent> events, Order order) {
  std::sort(events.begin(), events.end(),
            [&](const CalendarEvent& a, const CalendarEvent& b) { return order(a) < order(b); });
  return events;
}

QList<CalendarEvent> meetings(const QList<CalendarEvent>& events, const QDateTime& now) {
  const auto isMeeting = [&](const CalendarEvent& event) {
    return !event.allDay && !event.meetingLink.isEmpty() && !hasEnded(event, now);
  };
  return sorted(those(events, isMeeting), timeOrder);
}

/// The least important priority stands for none.
int weight(const Reminder& reminder) { return reminder.priority > 0 ? reminder.priority : 10; }

auto reminderOrder(const Reminder& reminder) {
  const bool isNever = !reminder.due;
  return std::make_tuple(isNever, isNever ? 0 : reminder.due->toMSecsSinceEpoch(), weight(reminder), reminder.title,
                         reminder.uid);
}

}  // namespace

bool CalendarModel::touches(const CalendarEvent& event, QDate day) {
  const QDate last = event.end > event.start ? event.end.addMSecs(-1).date() : event.start.date();
  return event.start.date() <= day && day <= last;
}

bool CalendarModel::isNow(const CalendarEvent& event, const QDateTime& now) {
  return event.start <= now && !hasEnded(event, now);
}

QList<CalendarEvent> CalendarModel::onDay(const QList<CalendarEvent>& events, QDate day) {
  return sorted(those(events, [&](const CalendarEvent& event) { return touches(event, day); }), dayOrder);
}

QList<CalendarEvent> CalendarModel::today(const QList<CalendarEvent>& events, const QDateTime& now) {
  return onDay(events, now.date());
}

int CalendarModel::count(const QList<CalendarEvent>& events, QDate day) {
  return static_cast<int>(
      std::ranges::count_if(events, [&](const CalendarEvent& event) { return touches(event, day); }));
}

QList<CalendarModel::Day> CalendarModel::agenda(const QList<CalendarEvent>& events, QDate first, int days) {
  QList<Day> agenda;
  for (int i = 0; i < days; ++i) agenda.append({first.addDays(i), onDay(events, first.addDays(i))});
  return agenda;
}

QList<CalendarEvent> CalendarModel::upcoming(const QList<CalendarEvent>& events, const QDateTime& now, int most) {
  const auto order = [&](const CalendarEvent& event) {
    return std::tuple_cat(std::make_tuple(event.allDay && event.start <= now), timeOrder(event));
  };
  auto found = sorted(those(events, [&](const CalendarEvent& event) { return !hasEnded(event, now); }), order);
  found.resize(std::clamp<qsizetype>(most, 0, found.size()));
  return found;
}

std::optional<CalendarEvent> CalendarModel::next(const QList<CalendarEvent>& events, const QDateTime& now) {
  const auto found = upcoming(events, now, 1);
  return found.isEmpty() ? std::nullopt : std::optional(found.first());
}

std::optional<CalendarEvent> CalendarModel::nextMeeting(const QList<CalendarEvent>& events, const QDateTime& now) {
  const auto found = meetings(events, now);
  if (found.isEmpty()) return std::nullopt;
  const QDateTime soon = now.addSecs(joinAhead * kSecondsInMinute);
  const auto later = std::ranges::find_if(found, [&](const CalendarEvent& event) { return event.start > soon; });
  return later == found.begin() ? *later : *std::prev(later);
}

QList<CalendarEvent> CalendarModel::meetingsToday(const QList<CalendarEvent>& events, const QDateTime& now) {
  return those(meetings(events, now), [&](const CalendarEvent& event) { return touches(event, now.date()); });
}

bool ReminderModel::isOverdue(const Reminder& reminder, const QDateTime& now) {
  if (reminder.completed || !reminder.due) return false;
  return reminder.dueAllDay ? reminder.due->date() < now.date() : *reminder.due < now;
}

QList<Reminder> ReminderModel::open(const QList<Reminder>& reminders, const QDateTime& now) {
  auto sorted = those(reminders, [](const Reminder& reminder) { return !reminder.completed; });
  std::sort(sorted.begin(), sorted.end(),
            [](const Reminder& a, const Reminder& b) { return reminderOrder(a) < reminderOrder(b); });
  QList<Reminder> found;
  QHash<QString, qsizetype> series;
  for (const Reminder& reminder : sorted) {
    if (reminder.occasion.isEmpty()) {
      found.append(reminder);
      continue;
    }
    const QString key = reminder.filePath + u'\n' + reminder.uid;
    const auto known = series.constFind(key);
    if (known == series.constEnd()) {
      series.insert(key, found.size());
      found.append(reminder);
    } else if (isOverdue(reminder, now)) {
      found[*known] = reminder;
    }
  }
  // A later occasion took the place of an earlier one.
  std::stable_sort(found.begin(), found.end(),
                   [](const Reminder& a, const Reminder& b) { return reminderOrder(a) < reminderOrder(b); });
  return found;
}

std::optional<Reminder> ReminderModel::next(const QList<Reminder>& reminders, const QDateTime& now) {
  const auto found = open(reminders, now);
  return found.isEmpty() ? std::nullopt : std::optional(found.first());
}

QList<Reminder> ReminderModel::dueToday(const QList<Reminder>& reminders, const QDateTime& now) {
  return those(open(reminders, now),
               [&](const Reminder& reminder) { return reminder.due && reminder.due->date() <= now.date(); });
}

QList<Reminder> ReminderModel::onDay(const QList<Reminder>& reminders, const QDateTime& now, QDate day) {
  return those(open(reminders, now),
               [&](const Reminder& reminder) { return reminder.due && reminder.due->date() == day; });
}

QList<Reminder> ReminderModel::completedToday(const QList<Reminder>& reminders, const QDateTime& now) {
  auto found = those(reminders, [&](const Reminder& reminder) {
    return reminder.completed && reminder.completedAt && reminder.completedAt->date() == now.date();
  });
  std::stable_sort(found.begin(), found.end(),
                   [](const Reminder& a, const Reminder& b) { return *a.completedAt > *b.completedAt; });
  return found;
}

}  // namespace tarnwick
