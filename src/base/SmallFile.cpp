#include "base/SmallFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <cerrno>

#include "base/FileDescriptor.h"

namespace tarnwick {

namespace {

/// What closing says is not the reason.
std::optional<QByteArray> readOpened(FileDescriptor file, qint64 most) {
  if (!file) return std::nullopt;
  auto data = SmallFile::read(file.number(), most);
  const int reason = errno;
  file.reset();
  errno = reason;
  return data;
}

}  // namespace

ssize_t SmallFile::readAt(int descriptor, off_t from, char* into, std::size_t space) {
  std::size_t filled = 0;
  while (filled < space) {
    const ssize_t got = ::pread(descriptor, into + filled, space - filled, from + static_cast<off_t>(filled));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return -1;
    if (got == 0) break;
    filled += static_cast<std::size_t>(got);
  }
  return static_cast<ssize_t>(filled);
}

std::optional<QByteArray> SmallFile::read(int descriptor, qint64 most) {
  const auto refuse = [](int reason) {
    errno = reason;
    return std::nullopt;
  };
  struct stat status;
  if (::fstat(descriptor, &status) != 0) return std::nullopt;
  if (S_ISDIR(status.st_mode)) return refuse(EISDIR);
  if (!S_ISREG(status.st_mode)) return refuse(EINVAL);
  if (status.st_size > most) return refuse(EFBIG);
  // One byte more than the file has: where it comes, the file has grown. The kernel's own files say that they are
  // empty, and a short one of them is read at once, as it is at one moment.
  constexpr qint64 kKernelFile = 4096;
  QByteArray data(std::min(most, std::max<qint64>(status.st_size, kKernelFile)) + 1, Qt::Uninitialized);
  qsizetype filled = 0;
  while (true) {
    const ssize_t got =
        readAt(descriptor, filled, data.data() + filled, static_cast<std::size_t>(data.size() - filled));
    if (got < 0) return std::nullopt;
    filled += got;
    if (filled < data.size()) break;
    if (filled > most) return refuse(EFBIG);
    data.resize(std::min<qint64>(most + 1, data.size() * 2));
  }
  data.truncate(filled);
  return data;
}

std::optional<QByteArray> SmallFile::read(const QString& path, qint64 most) {
  return readOpened(FileDescriptor(::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)),
                    most);
}

std::optional<QByteArray> SmallFile::readUnlinked(int folder, const char* name, qint64 most) {
  return readOpened(FileDescriptor(::openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)), most);
}

}  // namespace tarnwick
