#include "platform/linux/FileOperations.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <QPointer>
#include <QUrl>

#include "platform/linux/FileWork.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kFileManagerMs = 5000;

QHash<QString, Files::Kind> kindsOf(const QStringList& paths) {
  QHash<QString, Files::Kind> kinds;
  for (const QString& path : paths) {
    const QFileInfo info(path);
    kinds.insert(path, info.isDir()                        ? Files::Kind::Folder
                       : info.exists() || info.isSymLink() ? Files::Kind::File
                                                           : Files::Kind::Missing);
  }
  return kinds;
}

/// The nearest folder on the way to one that may not exist yet.
QString nearestFolder(QString path) {
  while (path != "/"_L1 && !QFileInfo(path).isDir()) path = QFileInfo(path).path();
  return path;
}

}  // namespace

FileOperations::FileOperations(TrashCan trash, Bus bus) : trash_(std::move(trash)), bus_(std::move(bus)) {}

void FileOperations::operate(std::function<FilesOutcome(const FileWork&)> work, QObject* context, Done done) {
  operations_.start([work = std::move(work), job = FileWork(trash_, operations_.stopToken())] { return work(job); },
                    [guard = QPointer(context), done = std::move(done)](const FilesOutcome& outcome) {
                      if (guard && done) done(outcome);
                    });
}

void FileOperations::look(const QStringList& paths, QObject* context,
                          std::function<void(const QHash<QString, Kind>&)> done) {
  looks_.start([paths] { return kindsOf(paths); },
               [guard = QPointer(context), done = std::move(done)](const auto& kinds) {
                 if (guard) done(kinds);
               });
}

void FileOperations::bringInto(const QString& folder, const QStringList& paths, FileTransfer how, QObject* context,
                               Done done) {
  operate([=](const FileWork& work) { return work.bringInto(folder, paths, how); }, context, std::move(done));
}

void FileOperations::trash(const QStringList& paths, QObject* context, Done done) {
  operate([=](const FileWork& work) { return work.moveToTrash(paths); }, context, std::move(done));
}

void FileOperations::takeBack(const QList<FileChange>& changes, QObject* context, Done done) {
  operate([=](const FileWork& work) { return work.takeBack(changes); }, context, std::move(done));
}

void FileOperations::emptyTrash(QObject* context, Done done) {
  operate([](const FileWork& work) { return work.emptyTrash(); }, context, std::move(done));
}

// --- The trash, watched ---------------------------------------------------------------------------------------------

int FileOperations::trashCount() {
  if (!watcher_) {
    watcher_ = std::make_unique<QFileSystemWatcher>();
    connect(watcher_.get(), &QFileSystemWatcher::directoryChanged, this, &FileOperations::count);
    count();
  }
  return count_;
}

void FileOperations::count() {
  countAgain_ = counting_;
  if (counting_) return;
  counting_ = true;
  looks_.start(
      [trash = trash_] {
        Counted counted{static_cast<int>(trash.contents().size()), trash.folders()};
        // The watcher takes what becomes a folder while it is added for a file, and is silent about it then.
        counted.watched.removeIf([](const QString& folder) { return !QFileInfo(folder).isDir(); });
        // The first thing that is thrown away makes the folder.
        const QString own = nearestFolder(trash.homeFolder() + "/files"_L1);
        if (!counted.watched.contains(own)) counted.watched << own;
        return counted;
      },
      [this](const Counted& counted) { take(counted); });
}

void FileOperations::take(const Counted& counted) {
  counting_ = false;
  bool more = countAgain_;
  const QStringList before = watcher_->directories();
  for (const QString& folder : before) {
    if (!counted.watched.contains(folder)) watcher_->removePath(folder);
  }
  for (const QString& folder : counted.watched) {
    // What happened between the counting and the watching would otherwise be missed.
    if (!before.contains(folder) && watcher_->addPath(folder)) more = true;
  }
  if (count_ != counted.count) {
    count_ = counted.count;
    Q_EMIT trashChanged();
  }
  if (more) count();
}

// --- The file manager -----------------------------------------------------------------------------------------------

void FileOperations::reveal(const QStringList& paths, QObject* context, std::function<void(bool)> done) {
  QDBusConnection bus = bus_();
  if (!bus.isConnected()) {
    QMetaObject::invokeMethod(
        context, [done] { done(false); }, Qt::QueuedConnection);
    return;
  }
  QStringList addresses;
  for (const QString& path : paths) addresses << QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
  auto message = QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
                                                u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
  message << addresses << QString();
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, kFileManagerMs), context);
  connect(watcher, &QDBusPendingCallWatcher::finished, context, [done](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    // One that takes its time has understood nevertheless.
    const QDBusError error = QDBusPendingReply<>(*finished).error();
    done(!error.isValid() || error.type() == QDBusError::NoReply || error.type() == QDBusError::TimedOut);
  });
}

}  // namespace tarnwick
