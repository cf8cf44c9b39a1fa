#include "files/FileWatch.h"

#include <QFileInfo>
#include <algorithm>

namespace tarnwick {

namespace {

/// Whether a path can be watched: it is there, and the user may read it.
bool isOpen(const QString& path) { return QFileInfo(path).isReadable(); }

/// The nearest folder above a path that can be watched.
QString folderAbove(const QString& path) {
  QString folder = QFileInfo(path).path();
  while (!isOpen(folder) && folder != QFileInfo(folder).path()) folder = QFileInfo(folder).path();
  return folder;
}

}  // namespace

FileWatch::FileWatch(Scheduler& scheduler, QObject* parent) : QObject(parent), scheduler_(scheduler) {}

void FileWatch::watch(const QStringList& paths) {
  if (!watcher_) {
    watcher_ = std::make_unique<QFileSystemWatcher>();
    connect(watcher_.get(), &QFileSystemWatcher::fileChanged, this, &FileWatch::soon);
    connect(watcher_.get(), &QFileSystemWatcher::directoryChanged, this, &FileWatch::folderChanged);
  }
  paths_ = paths;
  arm();
}

void FileWatch::arm() {
  QStringList wanted;
  missing_.clear();
  for (const QString& path : paths_) {
    const bool open = isOpen(path);
    if (!open) missing_.append(path);
    wanted.append(open ? path : folderAbove(path));
  }
  wanted.removeDuplicates();
  QStringList gone = watcher_->files() + watcher_->directories();
  for (const QString& path : wanted)
    if (gone.removeAll(path) == 0) watcher_->addPath(path);
  if (!gone.isEmpty()) watcher_->removePaths(gone);
}

void FileWatch::folderChanged(const QString& folder) {
  // A folder that is only waited in is a busy place, and most of what happens there does not matter here.
  const bool own = paths_.contains(folder);
  const bool came = std::ranges::any_of(missing_, isOpen);
  const bool went = !isOpen(folder);
  if (own || came)
    soon();
  else if (went || std::ranges::any_of(missing_, [&](const QString& path) { return folderAbove(path) != folder; }))
    arm();
}

void FileWatch::soon() {
  if (soon_) return;
  soon_ = scheduler_.after(kQuiet, [this] {
    soon_.reset();
    arm();  // A file that was replaced is another one than the one that was watched.
    Q_EMIT changed();
  });
}

}  // namespace tarnwick
