#pragma once

#include <QByteArray>
#include <memory>

#include "calendar/ports/CalendarRecords.h"

namespace tarnwick {

/// What one iCalendar text holds within a range. Records know nothing of the file yet: no path, no name of a calendar.
struct CalendarText {
  QList<CalendarEvent> events;
  QList<Reminder> reminders;
  QString name;    ///< As the text calls its calendar; may be empty.
  QString colour;  ///< "#rrggbb" or empty.
  bool hasEvents = false;
  bool hasReminders = false;
  bool isSingle = false;  ///< Whether all components are one thing: one event or one reminder with its exceptions.
  bool isCalendar = false;
  bool isDamaged = false;  ///< Whether something in it could not be understood and was left out.
};

/// Turns iCalendar text into records. Lives in a module of its own, for the library that it needs; one thread at a
/// time.
class CalendarTextReader {
 public:
  virtual ~CalendarTextReader() = default;

  /// Never throws: what cannot be understood is left out.
  virtual CalendarText read(const QByteArray& text, const CalendarRange& range) = 0;
};

/// The module and its entry point, which gives a reader that its caller owns.
constexpr const char* kCalendarModule = "tarnwick-ical.so";
constexpr const char* kCalendarDoor = "tarnwickCalendarTextReader";
using MakeCalendarTextReader = CalendarTextReader* (*)();

}  // namespace tarnwick
