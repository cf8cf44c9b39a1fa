#include "platform/ical/CalendarScan.h"

#include <QFileInfo>

#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/ForeignText.h"
#include "platform/ical/CalendarFileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// "#rrggbb" of what calendars write: with one or two digits a channel, with transparency behind it.
QString colourOf(const QString& text) {
  if (!text.startsWith(u'#')) return {};
  QString digits = text.mid(1).toLower();
  if (!std::ranges::all_of(digits, [](QChar c) { return "0123456789abcdef"_L1.contains(c); })) return {};
  if (digits.size() == 3) {
    for (const qsizetype at : {4, 2, 0}) digits.insert(at / 2, digits[at / 2]);
  }
  return digits.size() == 6 || digits.size() == 8 ? u'#' + digits.first(6) : QString();
}

}  // namespace

CalendarScan::CalendarScan(std::function<std::unique_ptr<CalendarTextReader>()> makeReader)
    : makeReader_(std::move(makeReader)) {}

CalendarScan::Result CalendarScan::run(const CalendarPlaces& places, const CalendarRange& range,
                                       const std::stop_token& stop) {
  CalendarListing listing = CalendarListing::of(places);
  Result result{.reading = {}, .folders = std::move(listing.folders), .awaited = std::move(listing.awaited)};
  result.reading.problems = std::move(listing.problems);
  if (!listing.files.isEmpty() && !std::exchange(isAsked_, true)) reader_ = makeReader_();
  if (!listing.files.isEmpty() && !reader_) {
    result.reading.problems << CalendarFileWords::tr("The part of Tarnwick that reads calendars is missing.");
    return result;
  }
  QHash<QString, Known> before;
  if (range_ == range) before.swap(known_);
  known_.clear();
  range_ = range;
  for (const CalendarFile& file : listing.files) {
    if (stop.stop_requested()) break;
    auto old = before.find(file.path);
    const bool isSame =
        old != before.end() && old->changed == file.changed && old->size == file.size && old->number == file.number;
    const Known& known = *known_.insert(file.path, isSame ? std::move(*old) : open(file, range));
    add(file, known.text, result.reading);
    if (!known.problem.isEmpty() && result.reading.problems.size() < mostProblems) {
      result.reading.problems << known.problem;
    }
  }
  return result;
}

CalendarScan::Known CalendarScan::open(const CalendarFile& file, const CalendarRange& range) {
  Known known{.changed = file.changed, .size = file.size, .number = file.number, .text = {}, .problem = {}};
  const QString name = QFileInfo(file.path).fileName();
  if (file.size > largestFile) {
    known.problem = CalendarFileWords::tr("The calendar file “%1” is too large.").arg(name);
    return known;
  }
  try {
    const auto data = DurableFile::readIfPresent(file.path);
    // Gone since it was listed: its folder reports that.
    if (!data) return known;
    known.text = reader_->read(*data, range);
    known.text.name = ForeignText::line(known.text.name);
    for (CalendarEvent& event : known.text.events) event.title = ForeignText::line(event.title);
    for (Reminder& reminder : known.text.reminders) reminder.title = ForeignText::line(reminder.title);
    if (!known.text.isCalendar && !data->trimmed().isEmpty()) {
      known.problem = CalendarFileWords::tr("The file “%1” is not a calendar.").arg(name);
    } else if (known.text.isDamaged) {
      known.problem = CalendarFileWords::tr("Parts of the calendar file “%1” could not be understood.").arg(name);
    }
  } catch (const DomainError& failure) {
    known.problem = failure.message();
    known.changed = -1;  // When it may be read again its times are as they were.
  }
  return known;
}

void CalendarScan::add(const CalendarFile& file, const CalendarText& text, CalendarReading& into) {
  into.hasCalendars = into.hasCalendars || text.hasEvents || (text.isCalendar && !file.isTasks && !text.hasReminders);
  into.hasReminders = into.hasReminders || text.hasReminders || (text.isCalendar && file.isTasks);
  const QString name = !file.calendarName.isEmpty() ? file.calendarName
                       : !text.name.isEmpty()       ? text.name
                                                    : file.fallbackName;
  const QString own = colourOf(file.colour);
  const QString colour = own.isEmpty() ? colourOf(text.colour) : own;
  for (CalendarEvent event : text.events) {
    event.calendarName = name;
    event.colour = colour;
    into.events.append(std::move(event));
  }
  for (Reminder reminder : text.reminders) {
    reminder.calendar = name;
    reminder.colour = colour;
    reminder.filePath = file.path;
    reminder.canComplete = file.mayChange && text.isSingle;
    into.reminders.append(std::move(reminder));
  }
}

}  // namespace tarnwick
