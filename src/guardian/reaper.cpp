// tarnwick-reaper PROGRAM ARGUMENT...
//
// Runs a program that must not outlive the one that asked for it. Descriptor 3 is the end of a pipe whose other end the
// asking program holds: when that closes, because it wants so or because it died, the program and all in its process
// group are ended, and whatever else it started. Input, output and errors are the program's own.

#include <errno.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <initializer_list>

namespace {

constexpr int kLifeline = STDERR_FILENO + 1;
constexpr int kPatienceMilliseconds = 200;  ///< Between the wish to end and the end.
constexpr int kCannotRun = 127;

/// Until the program has ended or the lifeline is cut; a wait without an end has a negative limit.
void waitFor(int program, int lifeline, int milliseconds) {
  pollfd watched[] = {{program, POLLIN, 0}, {lifeline, POLLIN, 0}};
  while (::poll(watched, lifeline < 0 ? 1 : 2, milliseconds) < 0 && errno == EINTR) {
  }
}

/// Those whose parent has gone are ours now. Their numbers are theirs until we have waited for them.
void endChildren() {
  char numbers[4096];
  const int list = ::open("/proc/thread-self/children", O_RDONLY | O_CLOEXEC);
  const ssize_t size = list < 0 ? 0 : ::read(list, numbers, sizeof numbers - 1);
  if (list >= 0) ::close(list);
  if (size <= 0) return;
  numbers[size] = 0;
  char* at = numbers;
  for (;;) {
    char* end = nullptr;
    const long number = ::strtol(at, &end, 10);
    if (end == at || number <= 1) return;
    ::kill(static_cast<pid_t>(number), SIGKILL);
    at = end;
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) return 2;
  ::close_range(kLifeline + 1, ~0U, 0);
  // Signals to a terminal's group or a session are the asking program's matter.
  for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) ::signal(number, SIG_IGN);
  ::prctl(PR_SET_CHILD_SUBREAPER, 1);
  const pid_t program = ::fork();
  if (program < 0) return kCannotRun;
  if (program == 0) {
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE}) ::signal(number, SIG_DFL);
    ::setpgid(0, 0);
    ::close(kLifeline);
    ::execv(arguments[1], arguments + 1);
    ::_exit(kCannotRun);
  }
  ::setpgid(program, program);  // Here too: whoever comes first.
  // Only the program reads and writes.
  ::close(STDIN_FILENO);
  ::close(STDOUT_FILENO);
  const int watch = static_cast<int>(::syscall(SYS_pidfd_open, program, 0));
  if (watch >= 0) {
    waitFor(watch, kLifeline, -1);
    ::kill(-program, SIGTERM);
    waitFor(watch, -1, kPatienceMilliseconds);
  }
  // Its number is its own until it is waited for, and so is its group's.
  ::kill(-program, SIGKILL);
  do {
    endChildren();
  } while (::waitpid(-1, nullptr, 0) > 0 || errno == EINTR);
  return 0;
}
