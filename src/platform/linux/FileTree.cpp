#include "platform/linux/FileTree.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "base/FileDescriptor.h"
#include "platform/linux/FileNaming.h"

namespace tarnwick {
namespace {

namespace fs = std::filesystem;

constexpr size_t kChunk = 1 << 20;

fs::path native(const QString& path) { return fs::path(QFile::encodeName(path).toStdString()); }

void require(bool condition) {
  if (!condition) throw FileFault{errno};
}

void require(const std::error_code& code) {
  if (code) throw FileFault{code.value()};
}

struct stat statusOf(const fs::path& path) {
  struct stat status = {};
  require(::lstat(path.c_str(), &status) == 0);
  return status;
}

void takeTimes(const fs::path& path, const struct stat& status) {
  const timespec times[] = {status.st_atim, status.st_mtim};
  // Some file systems keep none; the copy is no worse for it.
  ::utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW);
}

void copyContent(int from, int to, const std::stop_token& stop) {
  std::vector<char> buffer(kChunk);
  while (true) {
    if (stop.stop_requested()) throw FileFault{ECANCELED};
    const ssize_t count = ::read(from, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    require(count >= 0);
    if (count == 0) return;
    for (ssize_t done = 0; done < count;) {
      const ssize_t written = ::write(to, buffer.data() + done, static_cast<size_t>(count - done));
      if (written < 0 && errno == EINTR) continue;
      require(written >= 0);
      done += written;
    }
  }
}

void copyFile(const fs::path& from, const fs::path& to, const struct stat& status, const std::stop_token& stop) {
  const FileDescriptor in(::open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
  require(static_cast<bool>(in));
  FileDescriptor out(::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  require(static_cast<bool>(out));
  copyContent(in.number(), out.number(), stop);
  ::fchmod(out.number(), status.st_mode & 0777u);
  // What was written late, as over a network, may fail only now.
  require(::close(out.release()) == 0);
}

void copyEntry(const fs::path& from, const fs::path& to, const std::stop_token& stop) {
  if (stop.stop_requested()) throw FileFault{ECANCELED};
  const struct stat status = statusOf(from);
  std::error_code code;
  if (S_ISLNK(status.st_mode)) {
    fs::copy_symlink(from, to, code);
    require(code);
  } else if (S_ISREG(status.st_mode)) {
    copyFile(from, to, status, stop);
  } else if (S_ISDIR(status.st_mode)) {
    require(::mkdir(to.c_str(), 0700) == 0);
    for (fs::directory_iterator entry(from, code), end; !code && entry != end; entry.increment(code)) {
      copyEntry(entry->path(), to / entry->path().filename(), stop);
    }
    require(code);
    ::chmod(to.c_str(), status.st_mode & 0777u);
  } else {
    // A pipe, a socket or a device: reading it might never end.
    throw FileFault{EOPNOTSUPP};
  }
  takeTimes(to, status);
}

}  // namespace

QString FileFault::reason() const { return qt_error_string(code); }

bool FileTree::exists(const QString& path) {
  struct stat status = {};
  return ::lstat(native(path).c_str(), &status) == 0;
}

bool FileTree::isFolder(const QString& path) {
  struct stat status = {};
  return ::lstat(native(path).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

void FileTree::copy(const QString& from, const QString& to, const std::stop_token& stop) {
  if (exists(to)) throw FileFault{EEXIST};
  try {
    copyEntry(native(from), native(to), stop);
  } catch (const FileFault&) {
    std::error_code ignored;
    fs::remove_all(native(to), ignored);
    throw;
  }
}

bool FileTree::rename(const QString& from, const QString& to) {
  const fs::path source = native(from);
  const fs::path target = native(to);
  if (::renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno == EEXIST) return false;
  // Not every file system can refuse to replace; there the look beforehand must do.
  if (errno == EINVAL || errno == ENOSYS) {
    if (exists(to)) return false;
    if (::rename(source.c_str(), target.c_str()) == 0) return true;
  }
  throw FileFault{errno};
}

void FileTree::remove(const QString& path) {
  std::error_code code;
  fs::remove_all(native(path), code);
  require(code);
}

QString FileTree::underFreeName(const QString& folder, const QString& wanted, bool isFolder,
                                const std::function<bool(const QString& path)>& make) {
  for (int attempt = 1; attempt <= FileNaming::kMostAttempts; ++attempt) {
    const QString path = folder + u'/' + FileNaming::candidate(wanted, isFolder, attempt);
    if (make(path)) return path;
  }
  throw FileFault{EEXIST};
}

}  // namespace tarnwick
