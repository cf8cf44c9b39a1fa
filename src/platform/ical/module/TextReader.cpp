#include "platform/ical/module/TextReader.h"

#include <algorithm>

namespace tarnwick {
namespace {

// A range of some weeks holds fewer; more is a mistake or an attack.
constexpr qsizetype kMostRecords = 20'000;

int dayNumber(const QDate& date) { return date.year() * 10000 + date.month() * 100 + date.day(); }

QDate dateOf(WallSeconds wall) {
  const icaltimetype value = CalendarZones::valueOf(wall, true);
  return {value.year, value.month, value.day};
}

QDateTime moment(const CalendarTime& time) {
  return time.isDate ? dateOf(time.wall).startOfDay() : ComponentValues::localTime(time.utc());
}

/// One occasion of a series in the words of its file.
QString occasionText(const CalendarTime& kind, WallSeconds wall) {
  const icaltimetype value = CalendarZones::valueOf(wall, kind.isDate);
  const QString day = QString::asprintf("%04d%02d%02d", value.year, value.month, value.day);
  if (kind.isDate) return day;
  return day + QString::asprintf("T%02d%02d%02d%s", value.hour, value.minute, value.second, kind.isUtc ? "Z" : "");
}

qint64 lengthOf(icalcomponent* component, CalendarZones& zones, const CalendarTime& start) {
  const qint64 least = start.isDate ? kDay : 0;
  if (const auto end = ComponentValues::time(component, ICAL_DTEND_PROPERTY, zones)) {
    const qint64 length = start.isDate || end->isDate ? end->wall - start.wall : end->utc() - start.utc();
    return std::max(length, least);
  }
  return std::max(ComponentValues::duration(component).value_or(0), least);
}

}  // namespace

CalendarText TextReader::read(const QByteArray& text, const CalendarRange& range) {
  // Where the user is may have changed; then the days of the range are others.
  if (!zones_ || !(range_ == range)) {
    zones_ = std::make_unique<SystemZones>();
    budget_ = {};
  }
  range_ = range;
  return TextReading(text, range, *zones_, budget_).result();
}

TextReading::TextReading(const QByteArray& text, const CalendarRange& range, SystemZones& zones, WalkBudget& budget)
    : chunks_(TextChunks::of({text.constData(), static_cast<std::size_t>(text.size())})),
      from_(range.from.toSecsSinceEpoch()),
      until_(range.until.toSecsSinceEpoch()),
      // A day is another one elsewhere.
      firstDay_(dayNumber(range.from.date().addDays(-2))),
      lastDay_(dayNumber(range.until.date().addDays(2))),
      zones_(zones),
      budget_(budget) {}

CalendarText TextReading::result() {
  describe();
  collectExceptions();
  for (const TextChunks::Chunk& chunk : chunks_.chunks) {
    if (result_.events.size() + result_.reminders.size() > kMostRecords) {
      result_.isDamaged = true;
      break;
    }
    if (chunk.isException || isOutside(chunk)) continue;
    if (chunk.kind == TextChunks::Kind::Event) readEvent(chunk);
    if (chunk.kind == TextChunks::Kind::Todo) readTodo(chunk);
  }
  readLeftExceptions();
  result_.isDamaged = result_.isDamaged || budget_.leftMs <= 0;
  return std::move(result_);
}

void TextReading::describe() {
  const std::string* uid = nullptr;
  bool isSingle = true;
  for (const TextChunks::Chunk& chunk : chunks_.chunks) {
    if (chunk.kind == TextChunks::Kind::Zone) {
      zones_.add(chunk.text);
      continue;
    }
    result_.hasEvents = result_.hasEvents || chunk.kind == TextChunks::Kind::Event;
    result_.hasReminders = result_.hasReminders || chunk.kind == TextChunks::Kind::Todo;
    isSingle = isSingle && chunk.kind != TextChunks::Kind::Other && (!uid || *uid == chunk.uid);
    uid = &chunk.uid;
  }
  result_.isSingle = isSingle && uid && !uid->empty() && !chunks_.isCutOff && result_.hasEvents != result_.hasReminders;
  result_.isCalendar = chunks_.isCalendar;
  result_.isDamaged = chunks_.isCutOff;
  result_.name = QString::fromUtf8(chunks_.name.data(), static_cast<qsizetype>(chunks_.name.size())).trimmed();
  result_.colour = QString::fromUtf8(chunks_.colour.data(), static_cast<qsizetype>(chunks_.colour.size())).trimmed();
}

void TextReading::collectExceptions() {
  for (const TextChunks::Chunk& chunk : chunks_.chunks) {
    const bool isKnown = chunk.kind == TextChunks::Kind::Event || chunk.kind == TextChunks::Kind::Todo;
    if (!chunk.isException || !isKnown) continue;
    Component component = parse(chunk);
    const auto occasion =
        component ? ComponentValues::time(component.get(), ICAL_RECURRENCEID_PROPERTY, zones_) : std::nullopt;
    if (occasion) {
      exceptions_[chunk.uid].push_back({std::move(component), *occasion});
    } else {
      result_.isDamaged = true;
    }
  }
}

bool TextReading::isOutside(const TextChunks::Chunk& chunk) const {
  if (chunk.isSeries || exceptions_.contains(chunk.uid)) return false;
  if (chunk.kind == TextChunks::Kind::Todo) return chunk.isDone && chunk.completed > 0 && chunk.completed < firstDay_;
  if (chunk.start == 0) return false;
  if (chunk.start > lastDay_) return true;
  return !chunk.hasLength && std::max(chunk.start, chunk.end) < firstDay_;
}

Component TextReading::parse(const TextChunks::Chunk& chunk) {
  const std::string text(chunk.text);
  Component component(icalparser_parse_string(text.c_str()));
  const auto wanted = chunk.kind == TextChunks::Kind::Event ? ICAL_VEVENT_COMPONENT : ICAL_VTODO_COMPONENT;
  if (component && icalcomponent_isa(component.get()) == wanted) return component;
  result_.isDamaged = true;
  return nullptr;
}

// --- Events ---------------------------------------------------------------------------------------------------------

void TextReading::readEvent(const TextChunks::Chunk& chunk) {
  const Component component = parse(chunk);
  if (!component) return;
  const auto start = ComponentValues::time(component.get(), ICAL_DTSTART_PROPERTY, zones_);
  if (!start) {
    result_.isDamaged = true;
    return;
  }
  const qint64 length = lengthOf(component.get(), zones_, *start);
  Occasions occasions(component.get(), zones_, *start, length, budget_);
  if (const auto exceptions = exceptions_.find(chunk.uid); exceptions != exceptions_.end()) {
    for (const Exception& exception : exceptions->second) occasions.takeOut(exception.occasion);
  }
  addEvents(component.get(), *start, occasions, length);
}

void TextReading::addEvents(icalcomponent* component, const CalendarTime& start, const Occasions& occasions,
                            qint64 length) {
  if (ComponentValues::status(component) == ICAL_STATUS_CANCELLED) return;
  std::optional<CalendarEvent> event;
  for (const Occasion& occasion : occasions.within(from_, until_)) {
    if (!event) event = ComponentValues::event(component);
    event->allDay = start.isDate;
    if (start.isDate) {
      const QDate day = dateOf(occasion.wall);
      event->start = day.startOfDay();
      event->end = day.addDays(length / kDay).startOfDay();
    } else {
      event->start = ComponentValues::localTime(occasion.utc);
      event->end = ComponentValues::localTime(occasion.utc + length);
    }
    result_.events.append(*event);
  }
}

// --- Reminders ------------------------------------------------------------------------------------------------------

void TextReading::readTodo(const TextChunks::Chunk& chunk) {
  const Component component = parse(chunk);
  if (!component || ComponentValues::status(component.get()) == ICAL_STATUS_CANCELLED) return;
  const auto start = ComponentValues::time(component.get(), ICAL_DTSTART_PROPERTY, zones_);
  const auto due = ComponentValues::time(component.get(), ICAL_DUE_PROPERTY, zones_);
  const auto anchor = start ? start : due;
  if (!anchor) return addReminder(component.get(), chunk.uid, {});
  Occasions occasions(component.get(), zones_, *anchor, 0, budget_);
  // A series that is ticked off as a whole has no occasions left.
  if (!occasions.isSeries() || ComponentValues::reminder(component.get(), chunk.uid, zones_).completed) {
    return addReminder(component.get(), chunk.uid, {});
  }
  if (const auto exceptions = exceptions_.find(chunk.uid); exceptions != exceptions_.end()) {
    for (const Exception& exception : exceptions->second) {
      occasions.takeOut(exception.occasion);
      addReminder(exception.component.get(), chunk.uid, occasionText(exception.occasion, exception.occasion.wall));
    }
    exceptions_.erase(exceptions);
  }
  std::optional<qint64> untilDue;
  if (due)
    untilDue = anchor->isDate == due->isDate && !due->isUtc ? due->wall - anchor->wall : due->utc() - anchor->utc();
  addSeries(component.get(), chunk.uid, *anchor, occasions, untilDue);
}

void TextReading::addSeries(icalcomponent* component, const std::string& uid, const CalendarTime& anchor,
                            const Occasions& occasions, std::optional<qint64> untilDue) {
  Reminder reminder = ComponentValues::reminder(component, uid, zones_);
  for (const Occasion& occasion : occasions.within(from_, until_)) {
    reminder.occasion = occasionText(anchor, occasion.wall);
    CalendarTime due = anchor;
    due.wall = occasion.wall + untilDue.value_or(0);
    reminder.due = moment(due);
    reminder.dueAllDay = anchor.isDate;
    result_.reminders.append(reminder);
  }
}

/// One that stands alone: on its own, or in place of an occasion.
void TextReading::addReminder(icalcomponent* component, const std::string& uid, const QString& occasion) {
  if (ComponentValues::status(component) == ICAL_STATUS_CANCELLED) return;
  Reminder reminder = ComponentValues::reminder(component, uid, zones_);
  reminder.occasion = occasion;
  auto due = ComponentValues::time(component, ICAL_DUE_PROPERTY, zones_);
  const auto start = ComponentValues::time(component, ICAL_DTSTART_PROPERTY, zones_);
  const auto duration = ComponentValues::duration(component);
  if (!due && start && (duration || !occasion.isEmpty())) {
    due = start;
    due->wall += duration.value_or(0);
  }
  if (due) {
    reminder.due = moment(*due);
    reminder.dueAllDay = due->isDate;
  }
  const auto last = reminder.completed && reminder.completedAt ? reminder.completedAt : reminder.due;
  if (reminder.completed && last && last->toSecsSinceEpoch() < from_) return;
  result_.reminders.append(reminder);
}

/// Exceptions are things of their own too; some calendars hold nothing but them (an invitation to one occasion).
void TextReading::readLeftExceptions() {
  for (const auto& [uid, exceptions] : exceptions_) {
    for (const Exception& exception : exceptions) {
      icalcomponent* component = exception.component.get();
      if (icalcomponent_isa(component) == ICAL_VTODO_COMPONENT) {
        addReminder(component, uid, occasionText(exception.occasion, exception.occasion.wall));
        continue;
      }
      const auto start = ComponentValues::time(component, ICAL_DTSTART_PROPERTY, zones_);
      if (!start) continue;
      const qint64 length = lengthOf(component, zones_, *start);
      addEvents(component, *start, Occasions(component, zones_, *start, length, budget_), length);
    }
  }
}

}  // namespace tarnwick
