#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

namespace tarnwick {

/// Where the calendars of a user lie.
struct CalendarPlaces {
  /// Evolution's local calendars and lists, one folder each; kept open by its own service, so they are only read.
  QString evolutionData;
  /// What Evolution calls them.
  QString evolutionSources;
  /// Folders of iCalendar files, in any depth: one file an event, or one a calendar.
  QStringList folders;

  static CalendarPlaces ofUser();

  bool operator==(const CalendarPlaces&) const = default;
};

/// One iCalendar file.
struct CalendarFile {
  QString path;
  qint64 changed = 0;  ///< Nanoseconds.
  qint64 size = 0;
  quint64 number = 0;      ///< The file system's own.
  QString calendarName;    ///< What its calendar is called; empty where only the file can say.
  QString fallbackName;    ///< What it is called where the file does not say either.
  QString colour;          ///< "#rrggbb" or empty.
  bool isTasks = false;    ///< Whether it is known to be a list of things to do.
  bool mayChange = false;  ///< Whether no other program keeps it open.
};

/// The iCalendar files of a user, and the folders where more may appear.
struct CalendarListing {
  static constexpr qsizetype mostFiles = 20'000;
  static constexpr qsizetype mostFolders = 1000;
  static constexpr int mostDepth = 5;

  QList<CalendarFile> files;
  QStringList folders;                    ///< All that were looked into.
  QHash<QString, QSet<QString>> awaited;  ///< Folders in which one of ours may appear, under these names.
  QStringList problems;                   ///< Finished sentences.

  /// Looks at names and dates, opens no calendar. Takes as long as the disk does.
  static CalendarListing of(const CalendarPlaces& places);
};

}  // namespace tarnwick
