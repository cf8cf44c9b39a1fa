#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "app/CommandLine.h"
#include "app/ports/SessionApplication.h"
#include "base/FileLock.h"

namespace tarnwick {

/// A lock on the data folder. It is the kernel's, so it goes with the process however that ends.
class DataFolderLock {
 public:
  using Taking = FileLock::Taking;

  explicit DataFolderLock(const QString& directory);

  /// Tries to take the lock, making the folder, for its owner alone, where it is missing.
  Taking take();
  /// The process that holds the lock, as far as it wrote it down and still has the file open; 0 when unknown.
  qint64 holder() const;
  const QString& directory() const { return directory_; }

 private:
  void writeDownHolder() const;
  bool isOpenIn(qint64 process) const;

  QString directory_;
  FileLock file_;
  bool isHeld_ = false;
};

/// Only one dock runs on a data folder.
struct SingleInstance {
  enum class Decision { GoOn, HandOver, Replace };

  static constexpr double kPatience = 4;    ///< Seconds that a copy has to quit, or to take what is handed over.
  static constexpr double kPolling = 0.05;  ///< Seconds between two looks.
  static constexpr int kRefused = 2;        ///< The status of a start whose request was refused.

  /// What to do about a copy that runs. An unknown start of the other lets this one go on; an executable that is newer
  /// than the other's start replaces it.
  static Decision decide(const std::optional<QDateTime>& otherStarted, const QDateTime& executableModified,
                         bool benchmarking);

  /// When a process began; absent when there is no such process.
  static std::optional<QDateTime> startOf(qint64 process);
  /// Whether the executable was replaced on the disk after this process started.
  static bool isStale(const QString& executable);

  /// What a command line names to be opened, as URLs: files that exist, and addresses.
  static QStringList urls(const QStringList& files, const QString& workingDirectory);
  /// A sentence about each file that a command line names and that is not there.
  static QStringList missing(const QStringList& files, const QString& workingDirectory);

  /// What became of a start: nothing when this process may go on, else the status to end with. Then the running copy
  /// was brought forward and given what the command line asks; or it could not be reached, which `say` receives; or it
  /// is an older build that did not quit, which `alert` receives as a title and a text.
  struct Voices {
    std::function<void(const QString& sentence)> say;
    std::function<void(const QString& title, const QString& text)> alert;
  };
  static std::optional<int> resolve(DataFolderLock& lock, SessionApplication& session, const QString& executable,
                                    const CommandLine& line, const Voices& voices);
};

}  // namespace tarnwick
