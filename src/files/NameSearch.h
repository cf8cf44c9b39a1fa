#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <stop_token>

#include "files/FolderReading.h"
#include "files/NameIndex.h"

namespace tarnwick {

/// Finds files and folders by name with the help of an index, as they are on the disk now. Since saving a file changes
/// no folder, the index may know an old time of it; so what the user had open lately is looked at first.
struct NameSearch {
  /// So many are looked at on the disk.
  static constexpr qsizetype kMostCandidates = 400;

  /// Those whose names hold the text, the newest change first, at most so many. `recent`: paths of files that the user
  /// had open lately; others than those below the index's folder are passed over. After them comes what is in the
  /// folders of `first`. Blocks.
  static QList<FolderEntry> newest(const NameIndex& index, const QString& text, const QStringList& recent,
                                   qsizetype most, const std::stop_token& stop = {},
                                   const NameIndex::Folders& first = {});
};

}  // namespace tarnwick
