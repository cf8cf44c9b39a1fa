#include <QtGlobal>

#include "platform/ical/module/TextReader.h"

/// The module's entry point; the caller owns what it gives.
extern "C" Q_DECL_EXPORT tarnwick::CalendarTextReader* tarnwickCalendarTextReader() {
  // A mistake in a file is reported by what is returned, never by the end of the program.
  icalerror_set_errors_are_fatal(0);
  return new tarnwick::TextReader;
}
