#include "browser/Sandbox.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace tarnwick {

namespace {

bool write(const char* path, const char* text, int size) {
  const int file = ::open(path, O_WRONLY | O_CLOEXEC);
  return file >= 0 && ::write(file, text, static_cast<size_t>(size)) == size;
}

/// What the engine's own first step is. A system may allow the namespace and then nothing within it.
bool enterNamespace() {
  const unsigned user = ::geteuid();
  if (::unshare(CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET) != 0) return false;
  char map[32];
  const int size = std::snprintf(map, sizeof map, "%u %u 1", user, user);
  return write("/proc/self/setgroups", "deny", 4) && write("/proc/self/uid_map", map, size);
}

}  // namespace

bool isSandboxAvailable() {
  if (::geteuid() == 0) return false;
  const pid_t child = ::fork();
  if (child == 0) ::_exit(enterNamespace() ? 0 : 1);
  int status = 0;
  while (child > 0 && ::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return false;
  }
  return child > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace tarnwick
