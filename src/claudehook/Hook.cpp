#include "claudehook/Hook.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string_view>

#include "claudehook/ActivityRecord.h"

namespace tarnwick {

namespace {

constexpr std::size_t kMostEventBytes = 2'000'000;
constexpr std::size_t kChunk = 8192;
constexpr mode_t kFolderMode = 0700;
constexpr mode_t kFileMode = 0600;
constexpr std::string_view kSwitch = "--claude-hook";

/// False where there is more than an event may have, or the descriptor can't be read.
bool readAll(int input, std::string& bytes) {
  char chunk[kChunk];
  for (;;) {
    const ssize_t count = ::read(input, chunk, sizeof chunk);
    if (count == 0) return true;
    if (count < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    bytes.append(chunk, static_cast<std::size_t>(count));
    if (bytes.size() > kMostEventBytes) return false;
  }
}

bool makeFolder(const std::string& folder) {
  if (::mkdir(folder.c_str(), kFolderMode) == 0 || errno == EEXIST) return true;
  const std::size_t slash = folder.find_last_of('/');
  if (errno != ENOENT || slash == std::string::npos || slash == 0) return false;
  return makeFolder(folder.substr(0, slash)) && (::mkdir(folder.c_str(), kFolderMode) == 0 || errno == EEXIST);
}

bool writeAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(file, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

/// Puts a finished file in its place. It changes places with one that is there, which then goes: what merely replaces
/// another file some file systems bring to the disk at once, and whoever runs the hook would wait for that.
bool putInPlace(const std::string& aside, const std::string& path) {
  struct stat there {};
  const bool isRecord = ::lstat(path.c_str(), &there) == 0 && S_ISREG(there.st_mode);
  if (!isRecord || ::renameat2(AT_FDCWD, aside.c_str(), AT_FDCWD, path.c_str(), RENAME_EXCHANGE) != 0)
    return ::rename(aside.c_str(), path.c_str()) == 0;
  ::unlink(aside.c_str());
  return true;
}

/// Beside its place first, so that a reader finds the record before or this one, whole.
void replace(const std::string& folder, const std::string& name, std::string_view content) {
  const std::string path = folder + '/' + name;
  const std::string aside = folder + "/." + name + '.' + std::to_string(::getpid());
  ::unlink(aside.c_str());  // Of a process of the same number that was killed.
  const int file = ::open(aside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kFileMode);
  if (file < 0) return;
  const bool isWhole = ::fchmod(file, kFileMode) == 0 && writeAll(file, content);
  if (::close(file) != 0 || !isWhole || !putInPlace(aside, path)) ::unlink(aside.c_str());
}

double now() {
  timespec time{};
  ::clock_gettime(CLOCK_REALTIME, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

}  // namespace

void recordClaudeEvent(int input, const std::string& folder) {
  std::string bytes;
  if (folder.empty() || !readAll(input, bytes)) return;
  const auto record = ClaudeActivityRecord::ofEvent(bytes, now());
  if (!record || !makeFolder(folder)) return;
  replace(folder, record->session + ".json", record->encoded());
}

void runClaudeHook(int count, const char* const* arguments) {
  for (int i = 1; i + 1 < count; ++i) {
    if (arguments[i] != kSwitch) continue;
    recordClaudeEvent(STDIN_FILENO, arguments[i + 1]);
    return;
  }
}

}  // namespace tarnwick
