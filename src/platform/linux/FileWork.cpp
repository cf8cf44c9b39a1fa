#include "platform/linux/FileWork.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <cerrno>
#include <ranges>

#include "platform/linux/FileTree.h"

namespace tarnwick {
namespace {

struct FileWorkWords {
  Q_DECLARE_TR_FUNCTIONS(Files)
};

using namespace Qt::StringLiterals;

QString nameOf(const QString& path) { return QFileInfo(path).fileName(); }
QString parentOf(const QString& path) { return QFileInfo(path).path(); }

/// Whether `inner` is `outer` or lies in it, whatever links lead there.
bool isWithin(const QString& inner, const QString& outer) {
  const QString in = QFileInfo(inner).canonicalFilePath();
  const QString out = QFileInfo(outer).canonicalFilePath();
  return !out.isEmpty() && (in == out || in.startsWith(out + u'/'));
}

bool sameFolder(const QString& one, const QString& other) {
  return QFileInfo(one).canonicalFilePath() == QFileInfo(other).canonicalFilePath();
}

}  // namespace

void FileWork::note(FilesOutcome& outcome, const QString& error) const {
  if (outcome.error.isEmpty() && !stop_.stop_requested()) outcome.error = error;
}

FilesOutcome FileWork::bringInto(const QString& folder, const QStringList& paths, FileTransfer how) const {
  FilesOutcome outcome;
  for (const QString& each : paths) {
    if (stop_.stop_requested()) break;
    const QString path = QDir::cleanPath(each);
    const bool itself = FileTree::isFolder(path) && isWithin(folder, path);
    if (itself && how != FileTransfer::Link) {
      note(outcome, FileWorkWords::tr("“%1” cannot be put into itself.").arg(nameOf(path)));
      continue;
    }
    try {
      bring(path, QDir::cleanPath(folder), how, outcome);
    } catch (const FileFault& fault) {
      const char* text = how == FileTransfer::Copy   ? QT_TRANSLATE_NOOP("Files", "“%1” could not be copied: %2.")
                         : how == FileTransfer::Link ? QT_TRANSLATE_NOOP("Files", "“%1” could not be linked: %2.")
                                                     : QT_TRANSLATE_NOOP("Files", "“%1” could not be moved: %2.");
      note(outcome, FileWorkWords::tr(text).arg(nameOf(path), fault.reason()));
    }
  }
  return outcome;
}

void FileWork::bring(const QString& path, const QString& folder, FileTransfer how, FilesOutcome& outcome) const {
  if (!FileTree::exists(path)) throw FileFault{ENOENT};
  const QString name = nameOf(path);
  const bool isFolder = FileTree::isFolder(path);
  if (how == FileTransfer::Link) {
    const QString link = FileTree::underFreeName(folder, name, isFolder, [&](const QString& free) {
      if (FileTree::exists(free)) return false;
      if (!QFile::link(path, free)) throw FileFault{errno ? errno : EACCES};
      return true;
    });
    outcome.changes << FileChange{FileChange::Kind::Linked, path, link};
    return;
  }
  if (how != FileTransfer::Copy) {
    if (sameFolder(parentOf(path), folder)) return;
    try {
      const QString moved = FileTree::underFreeName(folder, name, isFolder,
                                                    [&](const QString& free) { return FileTree::rename(path, free); });
      outcome.changes << FileChange{FileChange::Kind::Moved, path, moved};
      return;
    } catch (const FileFault& fault) {
      if (fault.code != EXDEV) throw;
    }
  }
  const QString copied = copyInto(path, folder, name);
  if (how != FileTransfer::Move) {
    outcome.changes << FileChange{FileChange::Kind::Copied, path, copied};
    return;
  }
  try {
    FileTree::remove(path);
    outcome.changes << FileChange{FileChange::Kind::Moved, path, copied};
  } catch (const FileFault& fault) {
    // Part of it may be gone: the copy is the only whole one now, so there is nothing to take back.
    note(outcome,
         FileWorkWords::tr("“%1” was copied, but the original could not be removed: %2.").arg(name, fault.reason()));
  }
}

/// Until it is whole it has a temporary name.
QString FileWork::copyInto(const QString& path, const QString& folder, const QString& name) const {
  const QString hidden =
      folder + "/.tarnwick-"_L1 + QString::number(QRandomGenerator::global()->generate64(), 16) + ".part"_L1;
  FileTree::copy(path, hidden, stop_);
  try {
    return FileTree::underFreeName(folder, name, FileTree::isFolder(path),
                                   [&](const QString& free) { return FileTree::rename(hidden, free); });
  } catch (const FileFault&) {
    FileTree::remove(hidden);
    throw;
  }
}

FilesOutcome FileWork::moveToTrash(const QStringList& paths) const {
  FilesOutcome outcome;
  const QStringList trashed = trash_.folders();
  for (const QString& each : paths) {
    if (stop_.stop_requested()) break;
    const QString path = QDir::cleanPath(each);
    if (trashed.contains(parentOf(path))) continue;
    try {
      outcome.changes << FileChange{FileChange::Kind::Trashed, path, trash_.put(path)};
    } catch (const FileFault& fault) {
      note(outcome, FileWorkWords::tr("“%1” could not be moved to the trash: %2.").arg(nameOf(path), fault.reason()));
    }
  }
  return outcome;
}

FilesOutcome FileWork::takeBack(const QList<FileChange>& changes) const {
  FilesOutcome outcome;
  for (const FileChange& change : changes | std::views::reverse) {
    if (stop_.stop_requested()) break;
    try {
      outcome.changes << FileChange{FileChange::Kind::Moved, change.to, takeBack(change)};
    } catch (const FileFault& fault) {
      note(outcome, FileWorkWords::tr("“%1” could not be put back: %2.").arg(nameOf(change.from), fault.reason()));
    }
  }
  return outcome;
}

QString FileWork::takeBack(const FileChange& change) const {
  if (!FileTree::exists(change.to)) throw FileFault{ENOENT};
  switch (change.kind) {
    case FileChange::Kind::Trashed:
      return TrashCan::restore(change.to, change.from);
    case FileChange::Kind::Copied:
      return trash_.put(change.to);
    case FileChange::Kind::Linked:
      // Another program may have put something else in its place.
      if (!QFileInfo(change.to).isSymLink()) throw FileFault{EEXIST};
      FileTree::remove(change.to);
      return {};
    case FileChange::Kind::Moved:
      break;
  }
  return moveTo(change.to, change.from);
}

QString FileWork::moveTo(const QString& path, const QString& original) const {
  const bool isFolder = FileTree::isFolder(path);
  QDir().mkpath(parentOf(original));
  try {
    return FileTree::underFreeName(parentOf(original), nameOf(original), isFolder,
                                   [&](const QString& free) { return FileTree::rename(path, free); });
  } catch (const FileFault& fault) {
    if (fault.code != EXDEV) throw;
  }
  const QString back = copyInto(path, parentOf(original), nameOf(original));
  FileTree::remove(path);
  return back;
}

FilesOutcome FileWork::emptyTrash() const {
  FilesOutcome outcome;
  for (const QString& trashed : trash_.contents()) {
    if (stop_.stop_requested()) break;
    try {
      TrashCan::erase(trashed);
    } catch (const FileFault& fault) {
      note(outcome, FileWorkWords::tr("“%1” could not be deleted: %2.").arg(nameOf(trashed), fault.reason()));
    }
  }
  return outcome;
}

}  // namespace tarnwick
