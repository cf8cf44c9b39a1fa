#include "base/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <thread>

namespace tarnwick {
namespace {

constexpr mode_t kPrivate = 0600;
constexpr std::chrono::milliseconds kPause{10};

}  // namespace

bool FileLock::open() {
  if (file_) return true;
  const QByteArray name = QFile::encodeName(path_);
  // Without waiting, in case it is a pipe.
  const int flags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
  FileDescriptor file(::open(name.constData(), O_RDWR | O_CREAT | flags, kPrivate));
  // One that is there and may only be read can be locked all the same.
  if (!file && (errno == EROFS || errno == EACCES)) {
    const int reason = errno;
    file = FileDescriptor(::open(name.constData(), O_RDONLY | flags));
    if (!file) errno = reason;
  }
  struct stat status = {};
  if (!file || ::fstat(file.number(), &status) != 0) {
    error_ = errno;
    return false;
  }
  if (!S_ISREG(status.st_mode)) {
    error_ = EINVAL;
    return false;
  }
  file_ = std::move(file);
  return true;
}

bool FileLock::stands() const {
  struct stat ours = {};
  struct stat named = {};
  return ::fstat(file_.number(), &ours) == 0 && ::lstat(QFile::encodeName(path_).constData(), &named) == 0 &&
         ours.st_dev == named.st_dev && ours.st_ino == named.st_ino;
}

FileLock::Taking FileLock::take(std::chrono::milliseconds patience) {
  if (held_) return Taking::Held;
  const auto start = std::chrono::steady_clock::now();
  for (;;) {
    if (!open()) return Taking::Impossible;
    if (::flock(file_.number(), LOCK_EX | LOCK_NB) == 0) {
      if (stands()) {
        held_ = true;
        return Taking::Held;
      }
      file_.reset();
      continue;
    }
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) {
      error_ = errno;
      return Taking::Impossible;
    }
    const auto waited = std::chrono::steady_clock::now() - start;
    if (patience != kEndless && waited >= patience) return Taking::OthersHave;
    std::this_thread::sleep_for(kPause);
    // A lock that has lost its name keeps no other process out.
    if (!stands()) file_.reset();
  }
}

void FileLock::release() {
  if (!std::exchange(held_, false)) return;
  // Said aloud: a child that is just being started has the file open as well, until it runs its program.
  ::flock(file_.number(), LOCK_UN);
  file_.reset();
}

}  // namespace tarnwick
