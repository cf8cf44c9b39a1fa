#pragma once

#include <QList>
#include <QPointF>
#include <QStringList>
#include <optional>

#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

class TileCanvas;

/// The next things to do, below the one done last.
struct TodosContent {
  static constexpr qsizetype kRows = 3;

  struct Item {
    QString text;
    bool done = false;
    int place = 0;  ///< In the whole list.

    bool operator==(const Item&) const = default;
  };
  QList<Item> items;
  qsizetype done = 0;
  qsizetype total = 0;

  bool operator==(const TodosContent&) const = default;
};
TodosContent makeTodos(const TileRequest& request);
TileText describe(const TodosContent& content, const QString& name);
void paint(TileCanvas& canvas, const TodosContent& content);
/// The place in the whole list of the item whose circle is under the point. How many there are depends on the scale.
std::optional<int> partAt(const TodosContent& content, const TileClick& click);

/// A few lines of the user's own.
struct NoteContent {
  QString text;  ///< As much of it as a tile may ever show; empty while nothing was written.

  bool operator==(const NoteContent&) const = default;
};
NoteContent makeNote(const TileRequest& request);
TileText describe(const NoteContent& content, const QString& name);
void paint(TileCanvas& canvas, const NoteContent& content);

/// The note that was written in last: its first line over the rest.
struct LatestNoteContent {
  QString title;
  QString text;

  bool operator==(const LatestNoteContent&) const = default;
};
LatestNoteContent makeLatestNote(const TileRequest& request);
TileText describe(const LatestNoteContent& content, const QString& name);
void paint(TileCanvas& canvas, const LatestNoteContent& content);

}  // namespace tarnwick
