#pragma once

#include <QString>
#include <QStringList>

#include "calendar/ports/CalendarRecords.h"

namespace tarnwick {

/// Where one can join an event.
struct MeetingLink {
  /// The address, or an empty text. What the calendar itself gives for joining comes first, then an address of a known
  /// meeting service anywhere in the event, then any secure address that is given as the place. An address in the notes
  /// that belongs to no known service is an agenda or an advertisement, not a meeting.
  static QString find(const CalendarEvent& event);

  /// "Zoom", "Google Meet" and so on; empty for an address of no known service.
  static QString service(const QString& link);

  /// Secure addresses in plain or HTML text, in their order, freed of what surrounds them and of wrappers that mail
  /// services put around them.
  static QStringList addresses(const QString& text);
};

}  // namespace tarnwick
