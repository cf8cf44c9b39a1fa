#pragma once

#include <QColor>
#include <QString>

#include "calendar/CalendarModel.h"
#include "views/theme/Palette.h"
#include "views/tiles/TileSources.h"

namespace tarnwick {

/// Events and reminders in words, as tiles and panels say them. Pure; the moment and the locale are the sources'.
struct EventWords {
  static QString time(const QDateTime& at, const TileSources& sources);
  /// "11:00 – 11:45", "All day".
  static QString range(const CalendarEvent& event, const TileSources& sources);
  /// "11:00 – 11:45" for an event of today, "Tomorrow, 09:00" for another.
  static QString when(const CalendarEvent& event, const TileSources& sources);
  /// "in 36 min", "now", "All day"; day and time for an event of another day.
  static QString distance(const CalendarEvent& event, const TileSources& sources);
  /// What follows an event of a list: its time today, its day otherwise.
  static QString brief(const CalendarEvent& event, const TileSources& sources);

  /// "Today, 14:00", "Fri"; empty for one that is never due.
  static QString due(const Reminder& reminder, const TileSources& sources);
  /// Its time today, its day otherwise.
  static QString briefDue(const Reminder& reminder, const TileSources& sources);

  /// A calendar's own colour; the accent where it has none and where everything is monochrome.
  static QColor colour(const QString& colour, const Palette& palette, Accent accent);
};

}  // namespace tarnwick
