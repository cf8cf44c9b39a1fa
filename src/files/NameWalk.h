#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QByteArrayView>
#include <functional>
#include <optional>
#include <stop_token>

#include "files/NameIndex.h"

namespace tarnwick {

/// Reads the names of everything below a folder, for a NameIndex, those near the top first. Links are named and never
/// followed. Folders that hold nothing which people look for are named but never entered: the trash, caches (that of
/// the user, and those that say so by a CACHEDIR.TAG), what version control and package managers keep, and other
/// machines' file systems. What vanishes meanwhile or cannot be read is left out.
struct NameWalk {
  struct Request {
    QByteArray root = {};  ///< A path as the system writes it.
    /// An earlier index of the same folder. A folder that was not changed since is not read again.
    const NameIndex* known = nullptr;
    /// Where the walk goes on that wrote `known`: folders before this place are taken as it has them.
    quint32 from = 0;
    /// So are folders that were changed before this, in seconds since the epoch.
    qint64 since = 0;
    /// Is called now and then with what a first index has so far.
    std::function<void(const NameIndex::Builder&)> grown = {};
    quint32 firstGrown = 2'000;  ///< For the first time at so many names, and then whenever they are twice as many.
  };
  struct Result {
    QByteArray file;            ///< The content of an index; empty where it would be that of `known`.
    qsizetype leftOut = 0;      ///< Names that are not UTF-8.
    qsizetype foldersRead = 0;  ///< The others were known.
    bool isWhole = false;       ///< Whether every folder is in it.
    bool isDone = false;        ///< Whether it came to the end, rather than being asked to stop.
    quint32 from = 0;           ///< Otherwise: where the next walk goes on.
  };

  /// Absent when the root cannot be read. A walk that is asked to stop gives what it has, and of the rest what is
  /// known. Blocks, for seconds.
  static std::optional<Result> read(const Request& request, const std::stop_token& stop = {});

  /// Whether a folder is never entered because of its name. `path` is relative to the root.
  static bool isAvoided(const QByteArray& path);
  /// Whether what is in a folder of an index is in that index too, had it been read. `path` is the whole one.
  static bool isEntered(const QByteArray& root, const QByteArray& path);
  /// Where file systems of other machines are, by what the kernel says of the mounts of a process. They are not even
  /// looked at: one whose server is gone answers nobody.
  static QByteArrayList farMounts(QByteArrayView mountInfo);
};

}  // namespace tarnwick
