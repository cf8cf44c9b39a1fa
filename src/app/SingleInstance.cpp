#include "app/SingleInstance.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QThread>
#include <QUrl>

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr mode_t kPrivate = 0600;

/// When a process began, which the kernel keeps as the age of its folder.
std::optional<QDateTime> startOf(qint64 pid) {
  if (pid <= 0) return std::nullopt;
  const QFileInfo folder(u"/proc/%1"_s.arg(pid));
  return folder.exists() ? std::optional(folder.lastModified()) : std::nullopt;
}

void handOver(SessionApplication& session, const CommandLine& line) {
  if (!line.files.isEmpty()) {
    QStringList urls;
    for (const QString& file : line.files) {
      urls << QUrl::fromUserInput(file, QDir::currentPath(), QUrl::AssumeLocalFile).toString(QUrl::FullyEncoded);
    }
    session.openInOther(urls);
    return;
  }
  if (!line.order) {
    session.activateOther();
    return;
  }
  switch (line.order->kind) {
    case Order::Kind::Toggle:
      session.actInOther(u"toggle"_s);
      break;
    case Order::Kind::CommandBar:
      session.actInOther(u"command-bar"_s);
      break;
    case Order::Kind::Focus:
      session.actInOther(u"focus"_s);
      break;
    case Order::Kind::Profile:
      session.actInOther(u"profile"_s, {line.order->profile});
      break;
  }
}

bool becameFree(DataFolderLock& lock) {
  QElapsedTimer waited;
  waited.start();
  while (waited.elapsed() < static_cast<qint64>(SingleInstance::kPatience * 1000)) {
    if (lock.take()) return true;
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    QThread::msleep(static_cast<unsigned long>(SingleInstance::kPolling * 1000));
  }
  return lock.take();
}

}  // namespace

DataFolderLock::DataFolderLock(const QString& directory) : path_(directory + "/tarnwick.lock"_L1) {}

DataFolderLock::~DataFolderLock() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

bool DataFolderLock::take() {
  if (held_) return true;
  if (descriptor_ < 0) {
    QDir().mkpath(QFileInfo(path_).path());
    descriptor_ = ::open(QFile::encodeName(path_).constData(), O_RDWR | O_CREAT | O_CLOEXEC, kPrivate);
    if (descriptor_ < 0) return true;
  }
  if (::flock(descriptor_, LOCK_EX | LOCK_NB) != 0) return errno != EWOULDBLOCK;
  held_ = true;
  const QByteArray pid = QByteArray::number(static_cast<qint64>(::getpid())) + '\n';
  // A lock whose holder is unknown still holds; the number only tells a newer build how old this one is.
  if (::ftruncate(descriptor_, 0) == 0) [[maybe_unused]]
    const auto written = ::pwrite(descriptor_, pid.constData(), static_cast<size_t>(pid.size()), 0);
  return true;
}

qint64 DataFolderLock::holder() const {
  if (descriptor_ < 0) return 0;
  char text[24] = {};
  const auto length = ::pread(descriptor_, text, sizeof text - 1, 0);
  return length > 0 ? QByteArray(text).trimmed().toLongLong() : 0;
}

SingleInstance::Decision SingleInstance::decide(const std::optional<QDateTime>& otherStarted,
                                                const QDateTime& executableModified, bool benchmarking) {
  if (benchmarking || !otherStarted) return Decision::GoOn;
  return executableModified > *otherStarted ? Decision::Replace : Decision::HandOver;
}

bool SingleInstance::isStale(const QString& executable) {
  const auto started = startOf(::getpid());
  const QFileInfo file(executable);
  return started && file.exists() && file.lastModified() > *started;
}

bool SingleInstance::resolve(DataFolderLock& lock, SessionApplication& session, const QString& executable,
                             const CommandLine& line,
                             const std::function<void(const QString&, const QString&)>& report) {
  if (lock.take()) return true;
  const qint64 other = lock.holder();
  const QFileInfo file(executable);
  // The lock is held, so going on is no choice here: without a date the other copy counts as the same build.
  const bool replace = file.exists() && decide(startOf(other), file.lastModified(), false) == Decision::Replace;
  if (!replace) {
    handOver(session, line);
    return false;
  }
  if (!session.actInOther(u"quit"_s) && other > 0) ::kill(static_cast<pid_t>(other), SIGTERM);
  if (becameFree(lock)) return true;
  report(QCoreApplication::translate("SingleInstance", "Tarnwick is already running"),
         QCoreApplication::translate("SingleInstance",
                                     "A copy of Tarnwick from before this one was built is still running and did not "
                                     "quit. Quit it from its menu bar icon, then open this one again."));
  return false;
}

}  // namespace tarnwick
