#pragma once

#include <QList>
#include <optional>

#include "views/tiles/ReadingFacts.h"
#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// A folder, or the newest files in it, under its name.
struct FolderContent {
  QString name;
  bool downloads = false;      ///< Whether an arrow points into it.
  QList<StackedFile> stack{};  ///< The newest first; empty for the folder itself.

  bool operator==(const FolderContent&) const = default;
};
FolderContent makeFolder(const TileRequest& request);
FolderContent makeDownloads(const TileRequest& request);
TileText describe(const FolderContent& content, const QString& name);
void paint(TileCanvas& canvas, const FolderContent& content);

/// What was thrown away.
struct TrashContent {
  QString name;
  std::optional<qint64> items;  ///< Absent until somebody counted them.

  bool operator==(const TrashContent&) const = default;
};
TrashContent makeTrash(const TileRequest& request);
TileText describe(const TrashContent& content, const QString& name);
void paint(TileCanvas& canvas, const TrashContent& content);

/// Files that were put aside.
struct ShelfContent {
  qint64 files = 0;

  bool operator==(const ShelfContent&) const = default;
};
ShelfContent makeShelf(const TileRequest& request);
TileText describe(const ShelfContent& content, const QString& name);
void paint(TileCanvas& canvas, const ShelfContent& content);

}  // namespace tarnwick
