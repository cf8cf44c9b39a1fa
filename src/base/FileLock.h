#pragma once

#include <QString>
#include <chrono>

#include "base/FileDescriptor.h"

namespace tarnwick {

/// A lock on a file that exists for nothing else. It is the kernel's, so it goes with the process however that ends.
/// The file is made for its owner alone; its folder must exist. A link in its place is not followed.
class FileLock {
 public:
  enum class Taking {
    Held,
    OthersHave,
    Impossible,  ///< No such file can be had or locked; `error` says why.
  };
  /// Waits without end.
  static constexpr std::chrono::milliseconds kEndless = std::chrono::milliseconds::max();

  explicit FileLock(const QString& path) : path_(path) {}

  /// Tries for so long. Again is harmless.
  Taking take(std::chrono::milliseconds patience = {});
  void release();

  /// The system's number for why it was impossible.
  int error() const { return error_; }
  /// Of the file; -1 before the first try.
  int descriptor() const { return file_.number(); }
  const QString& path() const { return path_; }

 private:
  bool open();
  /// Whether the file still has its name; a lock on one that was removed keeps no process out.
  bool stands() const;

  QString path_;
  FileDescriptor file_;
  bool held_ = false;
  int error_ = 0;
};

}  // namespace tarnwick
