#include "calendar/Calendar.h"

#include <algorithm>
#include <utility>

#include "calendar/MeetingLink.h"
#include "config/CalendarFolders.h"
#include "widgets/catalog/Family.h"

namespace tarnwick {

namespace {

QString joined(const QStringList& problems) {
  if (problems.size() < 2) return problems.value(0);
  return problems.first() + u' ' + Calendar::tr("And %1 more.").arg(problems.size() - 1);
}

}  // namespace

Calendar::Calendar(CalendarSource& source, const Scheduler& clock, QObject* parent)
    : QObject(parent),
      source_(source),
      clock_(clock),
      calendarMessage_(unreadEvents()),
      reminderMessage_(unreadReminders()) {
  connect(&source_, &CalendarSource::changed, this, [this] {
    // What is being read may be from before the change.
    isOutdated_ = isLoading_;
    if (isNeeded_ && !isLoading_) Q_EMIT outdated();
  });
}

CalendarRange Calendar::range() const {
  const QDate today = clock_.now().date();
  return {today.addDays(-daysBack).startOfDay(), today.addDays(daysAhead).startOfDay()};
}

bool Calendar::isNeededBy(const ActiveSets& active) const {
  return active.families.contains(familyText(Family::Calendar)) ||
         active.families.contains(familyText(Family::Reminders));
}

void Calendar::follow(const ActiveSets& active) {
  const bool wasNeeded = std::exchange(isNeeded_, isNeededBy(active));
  if (!wasNeeded) load();
}

void Calendar::start(const DockConfiguration& config, const ActiveSets& active) {
  // Before the first reading, so that it holds them.
  setFolders(CalendarFolders::of(config));
  follow(active);
}

void Calendar::beat(const ActiveSets& active) {
  follow(active);
  load();
}

void Calendar::load() {
  if (!isNeeded_ || isLoading_) return;
  isLoading_ = true;
  isOutdated_ = false;
  source_.load(range(), this, [this](const CalendarReading& reading) { take(reading); });
}

void Calendar::take(const CalendarReading& reading) {
  isLoading_ = false;
  if (!isLoaded_ || !(reading == last_)) {
    isLoaded_ = true;
    last_ = reading;
    events_ = reading.events;
    for (CalendarEvent& event : events_) {
      event.meetingLink = MeetingLink::find(event);
      if (event.title.isEmpty()) event.title = tr("Untitled Event");
    }
    std::ranges::stable_sort(events_, {}, &CalendarEvent::start);
    reminders_ = reading.reminders;
    for (Reminder& reminder : reminders_) {
      if (reminder.title.isEmpty()) reminder.title = tr("Untitled Reminder");
    }
    problem_ = joined(reading.problems);
    // A user whose calendars cannot be read needs no other folder.
    const bool isUnread = !problem_.isEmpty() && !reading.hasCalendars && !reading.hasReminders;
    const auto without = [&](const QString& none) { return isUnread ? problem_ : none; };
    calendarMessage_ =
        reading.hasCalendars ? QString() : without(tr("No calendar was found. Add a folder of calendar files."));
    reminderMessage_ = reading.hasReminders
                           ? QString()
                           : without(tr("No list of reminders was found. Add a folder of calendar files."));
    Q_EMIT changed();
  }
  if (isOutdated_) Q_EMIT outdated();
}

void Calendar::setCompleted(Reminder reminder, bool completed) {
  const auto put = [this, reminder](bool done, const std::optional<QDateTime>& at) {
    const auto it = std::ranges::find_if(reminders_, [&](const Reminder& known) {
      return known.uid == reminder.uid && known.filePath == reminder.filePath && known.occasion == reminder.occasion;
    });
    if (it == reminders_.end()) return;
    it->completed = done;
    it->completedAt = at;
    Q_EMIT changed();
  };
  const QDateTime now = clock_.now();
  put(completed, completed ? std::optional(now) : std::nullopt);
  source_.setCompleted(reminder, completed, now, this, [this, reminder, put](const QString& failure) {
    if (failure.isEmpty()) return;
    put(reminder.completed, reminder.completedAt);
    Q_EMIT failed(failure);
  });
}

}  // namespace tarnwick
