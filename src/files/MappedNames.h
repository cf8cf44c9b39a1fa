#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <mutex>
#include <optional>

#include "base/DurableFile.h"
#include "files/NameIndex.h"

namespace tarnwick {

/// The index of names as searches use it: mapped and in memory with the first call of get(), and again when a newer one
/// has taken its place. Any thread may use it.
class MappedNames {
 public:
  /// At most so many folders are looked at before the others.
  static constexpr qsizetype kMostFolders = 1'024;

  struct Names {
    std::unique_ptr<NameIndex> index;
    NameIndex::Folders newest;  ///< Those that were changed last.
  };

  /// `root`: see NameIndex::open.
  MappedNames(QString file, QByteArray root) : file_(std::move(file)), root_(std::move(root)) {}

  /// Null where there is no index, or it is damaged, and while it is closed, as at the beginning. The first call takes
  /// its time; others that come meanwhile wait for it.
  std::shared_ptr<const Names> get();
  void open();
  /// Gives what is mapped, so that the caller chooses the thread on which the system takes its time to take it back. A
  /// search that still uses it holds it too.
  [[nodiscard]] std::shared_ptr<const Names> close();

 private:
  const QString file_;
  const QByteArray root_;
  std::mutex mapping_;  ///< Held while it is mapped, never on the main thread.
  std::mutex mutex_;    ///< For all that follows.
  bool isOpen_ = false;
  std::shared_ptr<const Names> names_;
  std::optional<DurableFile::Stamp> stamp_;  ///< Of the file that is mapped.
};

}  // namespace tarnwick
