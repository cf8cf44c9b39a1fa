#include "platform/linux/TrashCan.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStorageInfo>
#include <cerrno>
#include <optional>

#include "base/FileDescriptor.h"
#include "platform/linux/FileNaming.h"
#include "platform/linux/FileTree.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr auto kEnding = ".trashinfo"_L1;

std::optional<struct stat> statusOf(const QString& path) {
  struct stat status = {};
  if (::lstat(QFile::encodeName(path).constData(), &status) != 0) return std::nullopt;
  return status;
}

QString parentOf(const QString& path) { return QFileInfo(path).path(); }

/// The root of the file system that holds a folder.
QString topOf(QString folder, dev_t device) {
  while (folder != "/"_L1) {
    const QString above = parentOf(folder);
    const auto status = statusOf(above);
    if (!status || status->st_dev != device) break;
    folder = above;
  }
  return folder;
}

dev_t deviceOfNearest(QString folder) {
  while (folder != "/"_L1 && !QFileInfo::exists(folder)) folder = parentOf(folder);
  struct stat status = {};
  return ::stat(QFile::encodeName(folder).constData(), &status) == 0 ? status.st_dev : 0;
}

void makePrivate(const QString& folder) {
  if (::mkdir(QFile::encodeName(folder).constData(), 0700) == 0 || errno == EEXIST) return;
  throw FileFault{errno};
}

bool isOurs(const QString& folder) {
  const auto status = statusOf(folder);
  return status && S_ISDIR(status->st_mode) && status->st_uid == ::geteuid();
}

/// Where on another volume the user's trash may lie, the better place first. A shared folder counts only where nobody
/// can play tricks with it.
QStringList placesOn(const QString& top) {
  const QString base = top == "/"_L1 ? QString() : top;
  const QString user = QString::number(::geteuid());
  QStringList places;
  const auto shared = statusOf(base + "/.Trash"_L1);
  if (shared && S_ISDIR(shared->st_mode) && (shared->st_mode & S_ISVTX)) places << base + "/.Trash/"_L1 + user;
  places << base + "/.Trash-"_L1 + user;
  return places;
}

QString noteOf(const QString& trashed) {
  return parentOf(parentOf(trashed)) + "/info/"_L1 + QFileInfo(trashed).fileName() + kEnding;
}

/// Takes the name by writing the note about it. False when it is taken.
bool writeNote(const QString& note, const QString& original) {
  const FileDescriptor file(::open(QFile::encodeName(note).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  if (!file) {
    if (errno == EEXIST) return false;
    throw FileFault{errno};
  }
  const QByteArray text =
      "[Trash Info]\nPath=" + QFile::encodeName(original).toPercentEncoding("/") +
      "\nDeletionDate=" + QDateTime::currentDateTime().toString(u"yyyy-MM-ddTHH:mm:ss"_s).toLatin1() + '\n';
  if (::write(file.number(), text.constData(), static_cast<size_t>(text.size())) == text.size()) return true;
  const int code = errno;
  QFile::remove(note);
  throw FileFault{code};
}

}  // namespace

TrashCan::TrashCan(QString dataHome, Volumes volumes) : dataHome_(std::move(dataHome)), volumes_(std::move(volumes)) {}

TrashCan TrashCan::ofUser() {
  return {QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation), [] {
            QStringList roots;
            for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) roots << volume.rootPath();
            return roots;
          }};
}

QString TrashCan::folderFor(const QString& path) const {
  const auto status = statusOf(parentOf(path));
  if (!status) throw FileFault{errno};
  if (deviceOfNearest(dataHome_) == status->st_dev) {
    QDir().mkpath(dataHome_);
    makePrivate(homeFolder());
    return homeFolder();
  }
  FileFault fault{EACCES};
  for (const QString& place : placesOn(topOf(parentOf(path), status->st_dev))) {
    try {
      makePrivate(place);
      if (isOurs(place)) return place;
    } catch (const FileFault& refused) {
      fault = refused;
    }
  }
  throw fault;
}

QString TrashCan::put(const QString& path) const {
  const auto status = statusOf(path);
  if (!status) throw FileFault{errno};
  const QString folder = folderFor(path);
  makePrivate(folder + "/files"_L1);
  makePrivate(folder + "/info"_L1);
  // On another volume the note must stay true wherever that is mounted next.
  const QString top = folder == homeFolder() ? QString() : topOf(parentOf(path), status->st_dev);
  const QString original = top.isEmpty() ? path : QDir(top).relativeFilePath(path);
  const QString name = QFileInfo(path).fileName();
  for (int attempt = 1; attempt <= FileNaming::kMostAttempts; ++attempt) {
    const QString trashed =
        folder + "/files/"_L1 +
        FileNaming::candidate(name, S_ISDIR(status->st_mode), attempt, FileNaming::kMostBytes - kEnding.size());
    if (!writeNote(noteOf(trashed), original)) continue;
    try {
      if (FileTree::rename(path, trashed)) return trashed;
    } catch (const FileFault&) {
      QFile::remove(noteOf(trashed));
      throw;
    }
    QFile::remove(noteOf(trashed));
  }
  throw FileFault{EEXIST};
}

QString TrashCan::restore(const QString& trashed, const QString& original) {
  QDir().mkpath(parentOf(original));
  const QString path =
      FileTree::underFreeName(parentOf(original), QFileInfo(original).fileName(), FileTree::isFolder(trashed),
                              [&](const QString& free) { return FileTree::rename(trashed, free); });
  QFile::remove(noteOf(trashed));
  return path;
}

QStringList TrashCan::folders() const {
  QStringList result;
  if (isOurs(homeFolder())) result << homeFolder();
  for (const QString& volume : volumes_()) {
    for (const QString& place : placesOn(volume)) {
      if (isOurs(place) && !result.contains(place)) result << place;
    }
  }
  for (QString& folder : result) folder += "/files"_L1;
  return result;
}

QStringList TrashCan::contents() const {
  QStringList result;
  for (const QString& folder : folders()) {
    const QDir files(folder);
    const auto names = files.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& name : names) result << folder + u'/' + name;
  }
  return result;
}

void TrashCan::erase(const QString& trashed) {
  FileTree::remove(trashed);
  QFile::remove(noteOf(trashed));
}

}  // namespace tarnwick
