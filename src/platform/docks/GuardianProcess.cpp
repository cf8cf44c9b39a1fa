#include "platform/docks/GuardianProcess.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>
#include <array>
#include <cerrno>

#include "base/ModuleLoader.h"

namespace tarnwick {
namespace {

/// Where the guardian finds its line and its file, and the repair the file.
constexpr int kLine = STDIN_FILENO;
constexpr int kFile = STDERR_FILENO + 1;

bool isSameFile(int a, int b) {
  struct stat first = {};
  struct stat second = {};
  return ::fstat(a, &first) == 0 && ::fstat(b, &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

}  // namespace

GuardianProcess::GuardianProcess(const QString& program, Scheduler& scheduler, Pace pace)
    : program_(program), scheduler_(scheduler), pace_(pace) {}

GuardianProcess::~GuardianProcess() = default;

void GuardianProcess::watch(const QString& recoveryFile) {
  FileDescriptor file(::open(QFile::encodeName(recoveryFile).constData(), O_RDONLY | O_CLOEXEC));
  if (!file) return;
  // One that stands by for a file that went would find nothing to give back.
  const bool isWatched = file_ && isSameFile(file_.number(), file.number());
  if (isWatched && (line_ || nextWindow_)) return;
  file_ = std::move(file);
  directory_ = QFileInfo(recoveryFile).absolutePath();
  begin();
}

void GuardianProcess::watchWindows(const QString& directory) {
  directory_ = directory;
  if (std::exchange(windows_, true) && (line_ || nextWindow_)) return;
  // One that stands by for the dock does so for both.
  if (!line_ && !nextWindow_) begin();
}

void GuardianProcess::releaseWindows() {
  windows_ = false;
  if (!file_) farewell();
}

void GuardianProcess::release() {
  file_.reset();
  farewell();
  if (windows_) begin();
}

void GuardianProcess::begin() {
  farewell();
  beginWindow();
  start();
}

void GuardianProcess::start() {
  const QString guardian = ModuleLoader::find(QStringLiteral("tarnwick-guardian"));
  if (guardian.isEmpty()) return;
  std::array<int, 2> ends{};
  // Closed on exec: a program that the dock starts must not keep the line open after our death.
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return;
  FileDescriptor ours(ends[0]);
  // Above the numbers that they get in the child, so that neither takes the other's place there.
  const FileDescriptor theirs(::fcntl(ends[1], F_DUPFD_CLOEXEC, kFile + 1));
  ::close(ends[1]);
  FileDescriptor file;
  if (file_) file = FileDescriptor(::fcntl(file_.number(), F_DUPFD_CLOEXEC, kFile + 1));
  if (!theirs || (file_ && !file)) return;

  std::array words{QFile::encodeName(guardian), QFile::encodeName(program_), QFile::encodeName(directory_)};
  std::array<char*, 4> arguments{words[0].data(), words[1].data(), words[2].data(), nullptr};
  const pid_t child = ::fork();
  if (child == 0) {
    // Out of our process group, and no child of ours: what ends us does not end it, and it need not be waited for.
    ::setsid();
    if (::fork() != 0) ::_exit(0);
    ::dup2(theirs.number(), kLine);
    if (file)
      ::dup2(file.number(), kFile);
    else
      ::close(kFile);
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
    line_.reset();
    replace();
  });
}

void GuardianProcess::beginWindow() {
  windowBegan_ = scheduler_.reference();
  replaced_ = 0;
}

void GuardianProcess::replace() {
  const double left = windowBegan_ + pace_.window - scheduler_.reference();
  if (left <= 0) beginWindow();
  // One that cannot live must not be started without a pause, and must not be given up either.
  if (replaced_ >= pace_.replacements) {
    qWarning("The guardian of the system dock has ended %d times. It is started again in a moment.", replaced_ + 1);
    nextWindow_ = scheduler_.after(left, [this] {
      nextWindow_.reset();
      beginWindow();
      replace();
    });
    return;
  }
  ++replaced_;
  qWarning("The guardian of the system dock has ended and is started again.");
  start();
}

void GuardianProcess::farewell() {
  nextWindow_.reset();
  if (!line_) return;
  const char word = 'x';
  broken_.reset();
  [[maybe_unused]] const auto sent = ::send(line_.number(), &word, 1, MSG_NOSIGNAL);
  line_.reset();
}

}  // namespace tarnwick
