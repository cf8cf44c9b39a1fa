#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

#include "app/CommandLine.h"
#include "app/ports/SessionApplication.h"
#include "base/Scheduler.h"

namespace tarnwick {

/// A lock on the data folder. It is the kernel's, so it goes with the process however that ends.
class DataFolderLock {
 public:
  explicit DataFolderLock(const QString& directory);
  ~DataFolderLock();
  DataFolderLock(const DataFolderLock&) = delete;
  DataFolderLock& operator=(const DataFolderLock&) = delete;

  /// Tries to take the lock, making the folder where it is missing. True also where the folder cannot hold a lock at
  /// all (a read-only place): then nothing can be saved there either, so two copies cannot harm each other.
  bool take();
  bool isHeld() const { return held_; }
  /// The process that holds the lock, as far as it wrote it down; 0 when unknown.
  qint64 holder() const;

 private:
  QString path_;
  int descriptor_ = -1;
  bool held_ = false;
};

/// Only one dock runs on a data folder.
struct SingleInstance {
  enum class Decision { GoOn, HandOver, Replace };

  static constexpr double kPatience = 4;    ///< Seconds that an older copy has to quit.
  static constexpr double kPolling = 0.05;  ///< Seconds between two looks.

  /// What to do about a copy that runs. An unknown start of the other lets this one go on; an executable that is newer
  /// than the other's start replaces it.
  static Decision decide(const std::optional<QDateTime>& otherStarted, const QDateTime& executableModified,
                         bool benchmarking);

  /// Whether the executable was replaced on the disk after this process started.
  static bool isStale(const QString& executable);

  /// Whether this process may go on. Otherwise the running copy was brought forward, and was given what the command
  /// line asks; or it did not quit, which `report` is told in two sentences.
  static bool resolve(DataFolderLock& lock, SessionApplication& session, const QString& executable,
                      const CommandLine& line, const std::function<void(const QString&, const QString&)>& report);
};

}  // namespace tarnwick
