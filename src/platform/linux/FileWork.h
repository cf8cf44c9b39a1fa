#pragma once

#include <QStringList>
#include <stop_token>

#include "desktop/Files.h"
#include "platform/linux/TrashCan.h"

namespace tarnwick {

/// The operations on the user's files, as they run on a thread of their own: they block, and stop soon after they are
/// asked to. What was cancelled is no failure and has no sentence.
class FileWork {
 public:
  FileWork(TrashCan trash, std::stop_token stop) : trash_(std::move(trash)), stop_(std::move(stop)) {}

  FilesOutcome bringInto(const QString& folder, const QStringList& paths, FileTransfer how) const;
  FilesOutcome moveToTrash(const QStringList& paths) const;
  FilesOutcome takeBack(const QList<FileChange>& changes) const;
  FilesOutcome emptyTrash() const;

 private:
  void bring(const QString& path, const QString& folder, FileTransfer how, FilesOutcome& outcome) const;
  QString copyInto(const QString& path, const QString& folder, const QString& name) const;
  QString moveTo(const QString& path, const QString& original) const;
  QString takeBack(const FileChange& change) const;
  void note(FilesOutcome& outcome, const QString& error) const;

  TrashCan trash_;
  std::stop_token stop_;
};

}  // namespace tarnwick
