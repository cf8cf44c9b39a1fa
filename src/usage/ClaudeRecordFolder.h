#pragma once

#include <sys/stat.h>

#include <QDateTime>
#include <QString>
#include <map>
#include <mutex>
#include <set>
#include <stop_token>
#include <string>

#include "base/FileDescriptor.h"
#include "claudehook/ActivityRecord.h"
#include "usage/ClaudeActivity.h"

namespace tarnwick {

/// The records in one folder, kept from one reading to the next: a reading opens only the files that something happened
/// to since, whose names the kernel tells. All are read at first, where more happened than it keeps, and where the
/// folder is another one by now. Nothing in it is changed. Any thread; of two readings at a time one waits.
class ClaudeRecordFolder {
 public:
  explicit ClaudeRecordFolder(const QString& path);

  /// As ClaudeActivity::find.
  ClaudeActivity::Found find(const QDateTime& now, const std::stop_token& stop = {});
  /// How many files were opened so far.
  qint64 opened() const;

 private:
  /// Takes what the kernel has told; false where it has told nothing.
  bool takeEvents();
  void startEvents();
  void readAll(double present, const std::stop_token& stop);
  void readChanged(const std::stop_token& stop);
  void read(int folder, const std::string& name);
  ClaudeActivity::Found foundAt(double present);

  const QByteArray path_;
  mutable std::mutex mutex_;  ///< Over all that follows.
  FileDescriptor events_;
  bool isWhole_ = false;           ///< What is kept is all there is but for `changed_`.
  std::set<std::string> changed_;  ///< Names to be read again.
  std::map<std::string, ClaudeActivityRecord> records_;
  struct stat folder_ {};
  double present_ = 0;
  qint64 opened_ = 0;
};

}  // namespace tarnwick
