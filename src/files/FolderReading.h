#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <stop_token>

namespace tarnwick {

/// Folders are listed first, but among the newest; the largest files are listed first of their size.
enum class FolderOrder { Newest, Name, Kind, Size };

/// One thing in a folder.
struct FolderEntry {
  QString path;
  QString name;
  bool isFolder = false;
  qint64 size = 0;  ///< Bytes; 0 for a folder.
  QDateTime modified;

  bool operator==(const FolderEntry&) const = default;
};

/// What a folder holds, as far as it is shown.
struct FolderContents {
  QList<FolderEntry> entries;
  qsizetype total = 0;  ///< How many there are, shown or not.
  QString problem;      ///< A finished sentence when the folder could not be read.
  bool isGone = false;  ///< Whether that is because it isn't there.

  bool operator==(const FolderContents&) const = default;
};

/// Which part of a folder is wanted.
struct FolderRequest {
  QString folder;
  FolderOrder order = FolderOrder::Newest;
  bool onlyPictures = false;
  qsizetype most = 200;

  bool operator==(const FolderRequest&) const = default;
};

struct FolderReading {
  /// The first `most` things of a folder that are not hidden, in the order that is asked for. What vanishes meanwhile
  /// is left out. Blocks; stops early, with what it has, when asked to.
  static FolderContents read(const FolderRequest& request, const std::stop_token& stop = {});
  /// Whether a name is that of a picture.
  static bool isPicture(const QString& name);
};

}  // namespace tarnwick
