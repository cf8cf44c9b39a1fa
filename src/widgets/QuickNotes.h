#pragma once

#include <QList>
#include <QString>

namespace tarnwick {

struct DockConfiguration;
struct DockWidget;

/// A note as a tile shows it.
struct NoteReading {
  QString title;  ///< Its first line.
  QString text;   ///< What follows.

  bool operator==(const NoteReading&) const = default;
};

/// The notes that the user writes into widgets.
struct QuickNotes {
  /// As much of a text as a tile ever shows.
  static QString shortened(const QString& text);
  /// A note's first line and what follows, each on one line and shortened.
  static NoteReading reading(const QString& text);
  /// The notes of all profiles that hold something, the one that was written in last first.
  static QList<DockWidget> byAge(const DockConfiguration& config);
};

}  // namespace tarnwick
