#include "support/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QByteArray>
#include <QElapsedTimer>
#include <vector>

namespace tarnwick::testing {

namespace {

constexpr qint64 kPatience = 5'000;
constexpr int kLookAgainForAnEnd = 5;

pid_t launch(const QStringList& command, int inherited) {
  std::vector<QByteArray> words;
  for (const QString& word : command) words.push_back(word.toLocal8Bit());
  std::vector<char*> arguments;
  for (QByteArray& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);

  const pid_t child = fork();
  if (child != 0) return child;
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (inherited >= 0) fcntl(inherited, F_SETFD, 0);
  const int nowhere = open("/dev/null", O_RDWR);
  dup2(nowhere, 0);
  if (!qEnvironmentVariableIsSet("TARNWICK_TEST_VERBOSE")) {
    dup2(nowhere, 1);
    dup2(nowhere, 2);
  }
  execvp(arguments[0], arguments.data());
  _exit(127);
}

}  // namespace

std::unique_ptr<ChildProcess> ChildProcess::start(const QStringList& command, int inherited) {
  return std::unique_ptr<ChildProcess>(new ChildProcess(launch(command, inherited)));
}

ChildProcess::~ChildProcess() { stop(); }

bool ChildProcess::isRunning() {
  if (status_) return false;
  int status = 0;
  if (waitpid(pid_, &status, WNOHANG) == 0) return true;
  status_ = status;
  return false;
}

void ChildProcess::signal(int number) {
  if (isRunning()) kill(pid_, number);
}

void ChildProcess::stop() {
  if (!isRunning()) return;
  kill(pid_, SIGTERM);
  QElapsedTimer clock;
  clock.start();
  while (isRunning()) {
    if (clock.hasExpired(kPatience)) kill(pid_, SIGKILL);
    poll(nullptr, 0, kLookAgainForAnEnd);
  }
}

std::optional<int> ChildProcess::exitCode() {
  if (isRunning() || !WIFEXITED(*status_)) return std::nullopt;
  return WEXITSTATUS(*status_);
}

}  // namespace tarnwick::testing
