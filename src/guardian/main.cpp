// tarnwick-guardian PROGRAM DIRECTORY
//
// Waits on its standard input while the program has something of the user's changed. One byte means that everything has
// been given back. An end without it means that the program died: if the recovery file is still the one that was there
// at the start, PROGRAM is run to give it back.

#include <fcntl.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace {

constexpr int kSignals[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE, SIGUSR1, SIGUSR2};

/// The end of a session signals everybody; the program gives back by itself then, and says so here.
void disposeSignals(void (*handler)(int)) {
  for (const int number : kSignals) ::signal(number, handler);
}

void toNowhere(int descriptor, int nowhere) {
  if (nowhere >= 0) ::dup2(nowhere, descriptor);
}

/// Whether a file is there, and is the same as before.
struct Identity {
  bool there = false;
  struct stat status {};

  explicit Identity(const char* path) { there = ::stat(path, &status) == 0; }
  bool isStill(const Identity& before) const {
    return there && before.there && status.st_dev == before.status.st_dev && status.st_ino == before.status.st_ino &&
           status.st_mtim.tv_sec == before.status.st_mtim.tv_sec &&
           status.st_mtim.tv_nsec == before.status.st_mtim.tv_nsec;
  }
};

bool endsWithAWord() {
  for (;;) {
    char byte = 0;
    const ssize_t count = ::read(STDIN_FILENO, &byte, 1);
    if (count > 0) return true;
    if (count == 0 || errno != EINTR) return false;
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  disposeSignals(SIG_IGN);
  ::close_range(STDERR_FILENO + 1, ~0U, 0);
  const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  toNowhere(STDOUT_FILENO, nowhere);
  toNowhere(STDERR_FILENO, nowhere);
  if (::chdir("/") != 0) return 2;

  char file[4096];
  const int length = ::snprintf(file, sizeof file, "%s/native-dock-recovery.plist", argv[2]);
  if (length < 0 || static_cast<size_t>(length) >= sizeof file) return 2;
  const Identity before(file);
  if (endsWithAWord()) return 0;
  // Another start has repaired it in the meantime, and may have changed it anew.
  if (!Identity(file).isStill(before)) return 0;

  disposeSignals(SIG_DFL);
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  toNowhere(STDIN_FILENO, nowhere);
  ::setenv("TARNWICK_RESTORE_SAVED_ONLY", "1", 1);
  ::execl(argv[1], argv[1], "--restore-dock", "--restore-dock-directory", argv[2], static_cast<char*>(nullptr));
  return 127;
}
