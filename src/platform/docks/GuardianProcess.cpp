#include "platform/docks/GuardianProcess.h"

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>
#include <array>
#include <cerrno>

#include "base/ProgramParts.h"

namespace tarnwick {

GuardianProcess::GuardianProcess(const QString& program) : program_(program) {}

GuardianProcess::~GuardianProcess() = default;

void GuardianProcess::watch(const QString& directory) {
  directory_ = directory;
  if (line_) return;
  replacements_ = kReplacements;
  start();
}

void GuardianProcess::start() {
  const QString guardian = ProgramParts::find(QStringLiteral("tarnwick-guardian"));
  if (guardian.isEmpty()) return;
  std::array<int, 2> ends{};
  // Closed on exec: a program that the dock starts must not keep the line open after our death.
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return;
  FileDescriptor ours(ends[0]);
  const FileDescriptor theirs(ends[1]);

  std::array words{QFile::encodeName(guardian), QFile::encodeName(program_),
                   QFile::encodeName(QFileInfo(directory_).absoluteFilePath())};
  std::array<char*, 4> arguments{words[0].data(), words[1].data(), words[2].data(), nullptr};
  const pid_t child = ::fork();
  if (child == 0) {
    // Out of our process group, and no child of ours: what ends us ends it not, and nobody has to wait for it.
    ::setsid();
    if (::fork() != 0) ::_exit(0);
    ::dup2(theirs.number(), STDIN_FILENO);
    ::execv(arguments[0], arguments.data());
    ::_exit(127);
  }
  if (child < 0) return;
  while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
  line_ = std::move(ours);
  listen();
}

/// It never writes: whatever is to be read of the line is its end.
void GuardianProcess::listen() {
  if (!QCoreApplication::instance()) return;
  broken_ = std::make_unique<QSocketNotifier>(line_.number(), QSocketNotifier::Read);
  QObject::connect(broken_.get(), &QSocketNotifier::activated, broken_.get(), [this] {
    broken_->setEnabled(false);
    broken_.release()->deleteLater();
    replace();
  });
}

void GuardianProcess::replace() {
  line_.reset();
  if (replacements_-- > 0) start();
}

void GuardianProcess::release() {
  if (!line_) return;
  const char farewell = 'x';
  broken_.reset();
  [[maybe_unused]] const auto sent = ::send(line_.number(), &farewell, 1, MSG_NOSIGNAL);
  line_.reset();
}

}  // namespace tarnwick
