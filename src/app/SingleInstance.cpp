#include "app/SingleInstance.h"

#include <signal.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <QUrl>
#include <cerrno>

#include "app/SocketSession.h"
#include "base/DomainError.h"
#include "base/DurableFile.h"
#include "base/SmallFile.h"

namespace tarnwick {
namespace {

struct SingleInstanceWords {
  Q_DECLARE_TR_FUNCTIONS(SingleInstance)
};

using namespace Qt::StringLiterals;

/// Of the line that names the lock's holder; every number fits.
constexpr qsizetype kHolderWidth = 21;

qint64 readHolder(int descriptor) {
  char text[kHolderWidth] = {};
  const auto length = ::pread(descriptor, text, sizeof text, 0);
  return length > 0 ? QByteArray(text, length).trimmed().toLongLong() : 0;
}

std::optional<struct stat> statusOf(const QString& path) {
  struct stat status = {};
  return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? std::optional(status) : std::nullopt;
}

bool isSameFile(const struct stat& a, const struct stat& b) { return a.st_dev == b.st_dev && a.st_ino == b.st_ino; }

/// Whether the running executable of a process is not the file any more that is at `executable`. A package keeps
/// the date of its making, so the dates alone do not tell.
bool wasReplaced(qint64 process, const QString& executable) {
  const auto running = statusOf(u"/proc/%1/exe"_s.arg(process));
  const auto present = statusOf(executable);
  return running && present && !isSameFile(*running, *present);
}

/// Whether a process was started from this very path, which holds another file now.
bool lostItsFile(qint64 process, const QString& executable) {
  QString started = QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(process));
  const QString gone = u" (deleted)"_s;
  if (!started.endsWith(gone)) return false;
  started.chop(gone.size());
  return started == QFileInfo(executable).canonicalFilePath() && wasReplaced(process, executable);
}

/// One try to give the running copy what this command line asks.
class HandOver {
 public:
  explicit HandOver(const CommandLine& line)
      : order_(line.order),
        urls_(SingleInstance::urls(line.files, QDir::currentPath())),
        refused_(SingleInstance::missing(line.files, QDir::currentPath())),
        isPlain_(urls_.isEmpty() && refused_.isEmpty() && !order_) {}

  /// Whether nothing is asked but to come forward.
  bool isPlain() const { return isPlain_; }

  /// A sentence about each thing that was not taken.
  const QStringList& refused() const { return refused_; }

  /// Whether all has arrived by now. What arrived is not handed over again. It goes by the socket where it can, which
  /// alone answers that something is refused.
  bool attempt(SessionApplication& session, SocketSession& socket) {
    if (isPlain_) return session.activateOther();
    if (!urls_.isEmpty()) {
      if (!socket.openInOther(urls_) && !session.openInOther(urls_)) return false;
      keep(socket.refused());
      urls_.clear();
    }
    if (!order_) return true;
    if (!give(*order_, socket)) return give(*order_, session);
    keep(socket.refused());
    return true;
  }

 private:
  static bool give(const Order& order, SessionApplication& session) {
    switch (order.kind) {
      case Order::Kind::Toggle:
        return session.actInOther(u"toggle"_s);
      case Order::Kind::CommandBar:
        return session.actInOther(u"command-bar"_s);
      case Order::Kind::Focus:
        return session.actInOther(u"focus"_s);
      case Order::Kind::Profile:
        return session.actInOther(u"profile"_s, {order.number});
      case Order::Kind::App:
        return session.actInOther(u"app"_s, {order.number});
    }
    return false;
  }

  void keep(const QString& sentence) {
    if (!sentence.isEmpty()) refused_ << sentence;
  }

  std::optional<Order> order_;
  QStringList urls_;
  QStringList refused_;
  bool isPlain_;
};

/// Looks again and again until something holds; false when it does not within the patience.
bool keepsLooking(const std::function<bool()>& holds) {
  QElapsedTimer waited;
  waited.start();
  while (!holds()) {
    if (waited.elapsed() >= static_cast<qint64>(SingleInstance::kPatience * 1000)) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    QThread::msleep(static_cast<unsigned long>(SingleInstance::kPolling * 1000));
  }
  return true;
}

}  // namespace

// --- The lock -------------------------------------------------------------------------------------------------------

DataFolderLock::DataFolderLock(const QString& directory)
    : directory_(directory), file_(directory + "/tarnwick.lock"_L1) {}

DataFolderLock::Taking DataFolderLock::take() {
  if (isHeld_) return Taking::Held;
  try {
    DurableFile::makeParent(file_.path());
  } catch (const DomainError&) {
    return Taking::Impossible;
  }
  const Taking taking = file_.take();
  isHeld_ = taking == Taking::Held;
  if (isHeld_) writeDownHolder();
  return taking;
}

/// A lock whose holder is unknown still holds; the number only shows others which process to ask. Nothing but a number
/// is ever written over: the file may be anybody's by another name.
void DataFolderLock::writeDownHolder() const {
  struct stat status = {};
  if (::fstat(file_.descriptor(), &status) != 0 || status.st_nlink != 1 || status.st_size > kHolderWidth) return;
  if (status.st_size > 0 && readHolder(file_.descriptor()) == 0) return;
  const QByteArray pid = QByteArray::number(static_cast<qint64>(::getpid())).leftJustified(kHolderWidth - 1) + '\n';
  [[maybe_unused]] const auto written =
      ::pwrite(file_.descriptor(), pid.constData(), static_cast<size_t>(pid.size()), 0);
}

qint64 DataFolderLock::holder() const {
  if (file_.descriptor() < 0) return 0;
  const qint64 process = readHolder(file_.descriptor());
  return process > 0 && isOpenIn(process) ? process : 0;
}

/// The number may be that of an earlier holder, and by now of any other program.
bool DataFolderLock::isOpenIn(qint64 process) const {
  struct stat ours = {};
  if (::fstat(file_.descriptor(), &ours) != 0) return false;
  const QDir open(u"/proc/%1/fd"_s.arg(process));
  for (const QString& name : open.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
    const auto theirs = statusOf(open.filePath(name));
    if (theirs && isSameFile(ours, *theirs)) return true;
  }
  return false;
}

// --- Deciding -------------------------------------------------------------------------------------------------------

SingleInstance::Decision SingleInstance::decide(const std::optional<QDateTime>& otherStarted,
                                                const QDateTime& executableModified, bool benchmarking) {
  if (benchmarking || !otherStarted) return Decision::GoOn;
  return executableModified > *otherStarted ? Decision::Replace : Decision::HandOver;
}

std::optional<QDateTime> SingleInstance::startOf(qint64 process) {
  constexpr qint64 kLongestLine = 4096;
  constexpr qsizetype kStartTime = 22;  // Counted from one; the first two are the number and the name.
  if (process <= 0) return std::nullopt;
  const auto line = SmallFile::read(u"/proc/%1/stat"_s.arg(process), kLongestLine);
  if (!line) return std::nullopt;
  // The name is in parentheses and may hold anything.
  const QList<QByteArray> fields = line->mid(line->lastIndexOf(')') + 2).split(' ');
  if (fields.size() <= kStartTime - 3) return std::nullopt;
  const qint64 ticks = fields[kStartTime - 3].toLongLong();

  struct timespec sinceBoot = {};
  ::clock_gettime(CLOCK_BOOTTIME, &sinceBoot);
  const qint64 nowMs = static_cast<qint64>(sinceBoot.tv_sec) * 1000 + sinceBoot.tv_nsec / 1'000'000;
  // The kernel counts whole ticks, so the process began before the end of that tick.
  const qint64 startedMs = (ticks + 1) * 1000 / ::sysconf(_SC_CLK_TCK);
  return QDateTime::currentDateTime().addMSecs(startedMs - nowMs);
}

bool SingleInstance::isStale(const QString& executable) {
  const auto started = startOf(::getpid());
  const QFileInfo file(executable);
  if (!file.exists()) return false;
  return (started && file.lastModified() > *started) || wasReplaced(::getpid(), executable);
}

QStringList SingleInstance::urls(const QStringList& files, const QString& workingDirectory) {
  QStringList urls;
  for (const QString& file : files) {
    const QUrl url = QUrl::fromUserInput(file, workingDirectory, QUrl::AssumeLocalFile);
    const bool isThere = url.isLocalFile() ? QFileInfo::exists(url.toLocalFile()) : url.isValid();
    if (isThere) urls << url.toString(QUrl::FullyEncoded);
  }
  return urls;
}

QStringList SingleInstance::missing(const QStringList& files, const QString& workingDirectory) {
  QStringList sentences;
  for (const QString& file : files) {
    const QUrl url = QUrl::fromUserInput(file, workingDirectory, QUrl::AssumeLocalFile);
    if (!file.isEmpty() && url.isLocalFile() && !QFileInfo::exists(url.toLocalFile()))
      sentences << SingleInstanceWords::tr("There is no file “%1”.").arg(file);
  }
  return sentences;
}

std::optional<int> SingleInstance::resolve(DataFolderLock& lock, SessionApplication& session, const QString& executable,
                                           const CommandLine& line, const Voices& voices) {
  const bool canLock = lock.take() != DataFolderLock::Taking::Impossible;
  // Without a lock the name on the bus decides: it stands for one other copy, whatever its data.
  const auto isFree = [&] {
    return canLock ? lock.take() == DataFolderLock::Taking::Held : session.otherProcess() == 0;
  };
  const auto other = [&] { return canLock ? lock.holder() : session.otherProcess(); };
  const auto hasTheName = [&] { return other() > 0 && session.otherProcess() == other(); };
  // Beside the lock is a socket that needs no bus: for a session without one, and for a copy that lost its name.
  SocketSession door(lock.directory());
  const auto way = [&]() -> SessionApplication& {
    if (hasTheName()) return session;
    return door;
  };
  if (isFree()) return std::nullopt;

  // The lock is held, so going on is no choice here: without a date the other copy counts as the same build.
  const QFileInfo file(executable);
  const bool isNewer = file.exists() && (decide(startOf(other()), file.lastModified(), false) == Decision::Replace ||
                                         lostItsFile(other(), executable));
  if (isNewer) {
    const qint64 older = other();
    const bool asked = way().actInOther(u"quit"_s);
    if (!asked && older > 0 && older == other()) ::kill(static_cast<pid_t>(older), SIGTERM);
    if (keepsLooking(isFree)) return std::nullopt;
    voices.alert(
        SingleInstanceWords::tr("Tarnwick is already running"),
        SingleInstanceWords::tr("A copy of Tarnwick from before this one was built is still running and did not "
                                "quit. Quit it from its menu bar icon, then open this one again."));
    return 0;
  }

  // The other copy may be just coming up or going down: it is asked until it answers, or until its place is free.
  HandOver handOver(line);
  // What was not understood was reported; a user who asked only for that wants no window instead.
  if (handOver.isPlain() && !line.remarks.isEmpty()) return kRefused;
  bool free = false;
  const bool settled = keepsLooking([&] {
    free = isFree();
    return free || handOver.attempt(way(), door);
  });
  if (free) return std::nullopt;
  for (const QString& sentence : handOver.refused()) voices.say(sentence);
  if (settled && !handOver.refused().isEmpty()) return kRefused;
  if (settled || (handOver.isPlain() && !session.isReachable())) return 0;
  voices.say(SingleInstanceWords::tr("Tarnwick is already running but does not respond."));
  return 1;
}

}  // namespace tarnwick
