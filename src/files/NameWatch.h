#pragma once

#include <QByteArrayList>
#include <QHash>
#include <QStringList>
#include <memory>

#include "base/FileDescriptor.h"

namespace tarnwick {

/// Notices which files come, or are saved, in a number of folders. Its end is the end of all watches. Any thread, one
/// at a time.
class NameWatch {
 public:
  /// Null where nothing can be watched. Folders that are not there, or too many for the system, are left out.
  static std::unique_ptr<NameWatch> begin(const QByteArrayList& folders);

  /// Can be read from when there is something to take.
  int descriptor() const { return events_.number(); }
  qsizetype size() const { return folders_.size(); }
  /// The paths of what came or was saved since the last call, the latest last; of many at once only some. Never waits.
  QStringList take();

 private:
  explicit NameWatch(FileDescriptor events) : events_(std::move(events)) {}

  FileDescriptor events_;
  QHash<int, QByteArray> folders_;
};

}  // namespace tarnwick
