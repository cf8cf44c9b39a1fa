#include "views/families/calendar/EventWords.h"

#include "widgets/ClockWords.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QString allDay() { return TileWords::tr("All day"); }

/// The day on which an event is to be expected: today for one that has begun.
QDate dayOf(const CalendarEvent& event, const QDateTime& now) { return std::max(event.start.date(), now.date()); }

QString dayAndTime(const QDate& day, const QString& time, const TileSources& sources) {
  const QString name = ClockWords::day(day, sources.now.date(), sources.locale);
  return time.isEmpty() ? name : TileWords::tr("%1, %2").arg(name, time);
}

}  // namespace

QString EventWords::time(const QDateTime& at, const TileSources& sources) {
  return ClockWords::time(at.time(), sources.locale, sources.use24Hour).full();
}

QString EventWords::range(const CalendarEvent& event, const TileSources& sources) {
  if (event.allDay) return allDay();
  const ClockTime begin = ClockWords::time(event.start.time(), sources.locale, sources.use24Hour);
  const ClockTime end = ClockWords::time(event.end.time(), sources.locale, sources.use24Hour);
  if (event.end <= event.start) return begin.full();
  const QString first = begin.halfOfDay == end.halfOfDay ? begin.text() : begin.full();
  return first + u" – "_s + end.full();
}

QString EventWords::when(const CalendarEvent& event, const TileSources& sources) {
  if (dayOf(event, sources.now) == sources.now.date()) return range(event, sources);
  return dayAndTime(event.start.date(), event.allDay ? QString() : time(event.start, sources), sources);
}

QString EventWords::distance(const CalendarEvent& event, const TileSources& sources) {
  if (dayOf(event, sources.now) == sources.now.date())
    return event.allDay ? allDay() : ClockWords::until(event.start, sources.now);
  return when(event, sources);
}

QString EventWords::brief(const CalendarEvent& event, const TileSources& sources) {
  const QDate day = dayOf(event, sources.now);
  if (day != sources.now.date()) return ClockWords::day(day, sources.now.date(), sources.locale);
  return event.allDay ? allDay() : time(event.start, sources);
}

QString EventWords::due(const Reminder& reminder, const TileSources& sources) {
  if (!reminder.due) return {};
  return dayAndTime(reminder.due->date(), reminder.dueAllDay ? QString() : time(*reminder.due, sources), sources);
}

QString EventWords::briefDue(const Reminder& reminder, const TileSources& sources) {
  if (!reminder.due) return {};
  if (reminder.due->date() != sources.now.date() || reminder.dueAllDay)
    return ClockWords::day(reminder.due->date(), sources.now.date(), sources.locale);
  return time(*reminder.due, sources);
}

QColor EventWords::colour(const QString& colour, const Palette& palette, Accent accent) {
  const QColor own = QColor::isValidColor(colour) ? QColor(colour) : QColor();
  return own.isValid() && !palette.monochrome ? own : palette.accent(accent);
}

}  // namespace tarnwick
