#include "base/DurableFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "base/DomainError.h"
#include "base/FileDescriptor.h"
#include "base/SmallFile.h"

namespace tarnwick {
namespace {

struct DurableFileWords {
  Q_DECLARE_TR_FUNCTIONS(DurableFile)
};

constexpr QByteArrayView kDraftBegins = ".tarnwick-";
constexpr QByteArrayView kDraftEnds = ".tmp";
constexpr int kMostLinks = 40;
constexpr mode_t kUsualFile = 0666;
constexpr mode_t kPrivateFolder = 0700;

const char* const kUnwritable = QT_TRANSLATE_NOOP("DurableFile", "The file “%1” could not be written: %2.");
const char* const kUnreadable = QT_TRANSLATE_NOOP("DurableFile", "The file “%1” could not be read: %2.");
const char* const kUnmovable = QT_TRANSLATE_NOOP("DurableFile", "The file “%1” could not be moved: %2.");
const char* const kNoFolder = QT_TRANSLATE_NOOP("DurableFile", "The folder “%1” could not be created: %2.");

[[noreturn]] void fail(const char* sentence, const QByteArray& path, int code) {
  const QString reason = QString::fromLocal8Bit(std::generic_category().message(code).c_str());
  const QString name = QFileInfo(QFile::decodeName(path)).fileName();
  throw DomainError::invalid(DurableFileWords::tr(sentence).arg(name, reason));
}

QByteArray folderOf(const QByteArray& path) {
  const qsizetype slash = path.lastIndexOf('/');
  if (slash < 0) return ".";
  return slash == 0 ? QByteArray("/") : path.first(slash);
}

/// Repeats a call that a signal interrupted.
template <class Call>
auto uninterrupted(Call call) {
  decltype(call()) result;
  do result = call();
  while (result < 0 && errno == EINTR);
  return result;
}

FileDescriptor openFile(const QByteArray& path, int flags, mode_t mode = 0) {
  return FileDescriptor(uninterrupted([&] { return ::open(path.constData(), flags | O_CLOEXEC, mode); }));
}

/// Follows links to the file that they mean, which need not exist yet.
QByteArray followLinks(const QByteArray& path) {
  QByteArray at = path;
  for (int links = 0; links < kMostLinks; ++links) {
    QByteArray target(4096, Qt::Uninitialized);
    const ssize_t length = ::readlink(at.constData(), target.data(), static_cast<size_t>(target.size()));
    if (length < 0) return at;
    target.truncate(length);
    at = target.startsWith('/') ? target : folderOf(at) + '/' + target;
  }
  fail(kUnwritable, path, ELOOP);
}

/// The permissions that a write must leave: those asked for, else those of the file that is replaced.
std::optional<mode_t> finalMode(const QByteArray& target, std::optional<unsigned> wanted) {
  struct stat status;
  if (::stat(target.constData(), &status) != 0) return wanted;
  if (S_ISDIR(status.st_mode)) fail(kUnwritable, target, EISDIR);
  if (!S_ISREG(status.st_mode)) fail(kUnwritable, target, EINVAL);
  return wanted ? *wanted : status.st_mode & 07777;
}

bool isDraft(QByteArrayView name) {
  if (!name.startsWith(kDraftBegins) || !name.endsWith(kDraftEnds)) return false;
  const QByteArrayView number = name.sliced(kDraftBegins.size()).chopped(kDraftEnds.size());
  return !number.isEmpty() && number.size() <= 16 &&
         std::ranges::all_of(number, [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); });
}

/// The new file while it is being written; removed again unless it took the place of the old one. It is locked as long
/// as it is in use, so that one that a kill left behind can be distinguished from one that is needed.
class Draft {
 public:
  Draft(const QByteArray& target, std::optional<mode_t> mode) : target_(target) {
    do open(mode);
    while (wasRemoved());
    // The mode of a new file went through the user's mask; one that was asked for is meant to the letter.
    if (mode && ::fchmod(file_.number(), *mode) != 0) abandon(errno);
  }
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;
  ~Draft() { remove(); }

  void write(QByteArrayView data) {
    while (!data.isEmpty()) {
      const ssize_t written =
          uninterrupted([&] { return ::write(file_.number(), data.data(), static_cast<size_t>(data.size())); });
      if (written < 0) abandon(errno);
      data = data.sliced(written);
    }
  }

  /// All of it is on the disk.
  void finish() {
    if (uninterrupted([&] { return ::fsync(file_.number()); }) != 0) abandon(errno);
    close();
  }

  void close() {
    if (::close(file_.release()) != 0) abandon(errno);
  }

  void takePlace() {
    if (::rename(path_.constData(), target_.constData()) != 0) abandon(errno);
    exists_ = false;
  }

 private:
  void open(std::optional<mode_t> mode) {
    const QByteArray name = QByteArray::number(QRandomGenerator::system()->generate64(), 16);
    path_ = folderOf(target_) + '/' + kDraftBegins.toByteArray() + name + kDraftEnds.toByteArray();
    file_ = openFile(path_, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, mode.value_or(kUsualFile));
    if (!file_) fail(kUnwritable, target_, errno);
    exists_ = true;
    // The file is closed before it takes its place, so that late failures are reported; its lock stays.
    lock_ = FileDescriptor(::fcntl(file_.number(), F_DUPFD_CLOEXEC, 0));
    // Where there are no locks nothing is ever tidied away.
    uninterrupted([&] { return ::flock(file_.number(), LOCK_EX); });
  }
  /// Whether it was tidied away between its coming and its lock.
  bool wasRemoved() {
    struct stat status;
    return ::fstat(file_.number(), &status) == 0 && status.st_nlink == 0;
  }
  [[noreturn]] void abandon(int code) {
    remove();
    fail(kUnwritable, target_, code);
  }
  void remove() {
    if (std::exchange(exists_, false)) ::unlink(path_.constData());
  }

  QByteArray target_;
  QByteArray path_;
  FileDescriptor file_;
  FileDescriptor lock_;
  bool exists_ = false;
};

void removeLeftoversIn(const QByteArray& folder) {
  const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(folder.constData()), &::closedir);
  if (!listing) return;
  const int at = ::dirfd(listing.get());
  while (const dirent* entry = ::readdir(listing.get())) {
    if (!isDraft(entry->d_name)) continue;
    const FileDescriptor file(::openat(at, entry->d_name, O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
    struct stat status;
    if (!file || ::fstat(file.number(), &status) != 0) continue;
    if (!S_ISREG(status.st_mode) || status.st_uid != ::geteuid()) continue;
    if (::flock(file.number(), LOCK_EX | LOCK_NB) == 0) ::unlinkat(at, entry->d_name, 0);
  }
}

/// Waits until the disk has what was written to a file or entered into a folder.
bool reachDisk(const QByteArray& path) {
  const FileDescriptor file = openFile(path, O_RDONLY);
  return file && uninterrupted([&] { return ::fsync(file.number()); }) == 0;
}

void makeFolder(const QByteArray& path) {
  if (::mkdir(path.constData(), kPrivateFolder) == 0) return;
  if (errno == ENOENT && path != folderOf(path)) {
    makeFolder(folderOf(path));
    if (::mkdir(path.constData(), kPrivateFolder) == 0) return;
  }
  const int code = errno;
  struct stat status;
  const bool there = ::stat(path.constData(), &status) == 0;
  if (there && S_ISDIR(status.st_mode)) return;
  fail(kNoFolder, path, there ? ENOTDIR : code);
}

/// Whether a path leads to nothing because nothing was ever created there, rather than because a link on the way leads
/// nowhere.
bool isNobodysName(const QByteArray& path) {
  struct stat status;
  if (::lstat(path.constData(), &status) == 0) return false;
  const QByteArray folder = folderOf(path);
  if (folder == path || ::stat(folder.constData(), &status) == 0) return true;
  return isNobodysName(folder);
}

}  // namespace

void DurableFile::writeAtomically(const QByteArray& data, const QString& path, std::optional<unsigned> mode) {
  const QByteArray target = followLinks(QFile::encodeName(path));
  Draft draft(target, finalMode(target, mode));
  draft.write(data);
  draft.finish();
  draft.takePlace();
}

void DurableFile::writeQuickly(const QByteArray& data, const QString& path, std::optional<unsigned> mode) {
  const QByteArray target = followLinks(QFile::encodeName(path));
  Draft draft(target, finalMode(target, mode));
  draft.write(data);
  draft.close();
  draft.takePlace();
}

std::optional<DurableFile::Stamp> DurableFile::stamp(const QString& path) {
  struct stat status;
  if (::stat(QFile::encodeName(path).constData(), &status) != 0) return std::nullopt;
  return Stamp{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

bool DurableFile::replace(const QByteArray& data, const QString& path, const Stamp& before) {
  const QByteArray target = followLinks(QFile::encodeName(path));
  Draft draft(target, finalMode(target, std::nullopt));
  draft.write(data);
  draft.finish();
  if (stamp(path) != before) return false;
  draft.takePlace();
  return true;
}

void DurableFile::write(const QByteArray& data, const QString& path) {
  makeParent(path);
  writeAtomically(data, path, kPrivate);
  const QByteArray target = followLinks(QFile::encodeName(path));
  if (!reachDisk(target) || !reachDisk(folderOf(target))) fail(kUnwritable, target, EIO);
}

bool DurableFile::folderReachesDisk(const QString& path) {
  return reachDisk(folderOf(followLinks(QFile::encodeName(path))));
}

void DurableFile::removeLeftovers(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  removeLeftoversIn(folderOf(name));
  try {
    if (const QByteArray target = followLinks(name); target != name) removeLeftoversIn(folderOf(target));
  } catch (const DomainError&) {
    // A link that leads in a circle: nothing was ever written behind it.
  }
}

void DurableFile::makeParent(const QString& path) { makeFolder(folderOf(QFile::encodeName(path))); }

QByteArray DurableFile::read(const QString& path) {
  auto data = readIfPresent(path);
  if (!data) fail(kUnreadable, QFile::encodeName(path), ENOENT);
  return *data;
}

std::optional<QByteArray> DurableFile::readIfPresent(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  // Without waiting: a pipe under the name of a file must not hold up the start.
  const FileDescriptor file = openFile(name, O_RDONLY | O_NONBLOCK);
  if (file) {
    auto data = SmallFile::read(file.number(), kMostBytes);
    if (!data) fail(kUnreadable, name, errno);
    return data;
  }
  const int code = errno;
  if (code == ENOTDIR || (code == ENOENT && isNobodysName(name))) return std::nullopt;
  fail(kUnreadable, name, code);
}

void DurableFile::rename(const QString& from, const QString& to) {
  const QByteArray name = QFile::encodeName(from);
  if (::rename(name.constData(), QFile::encodeName(to).constData()) != 0) fail(kUnmovable, name, errno);
}

}  // namespace tarnwick
