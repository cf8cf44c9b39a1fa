#include "platform/linux/LinuxProcessSource.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QCoreApplication>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <memory>
#include <system_error>

#include "base/DomainError.h"
#include "base/FileDescriptor.h"
#include "base/ForeignText.h"
#include "base/SmallFile.h"

namespace tarnwick {
namespace {

struct LinuxProcessSourceWords {
  Q_DECLARE_TR_FUNCTIONS(LinuxProcessSource)
};

// The kernel cuts a name after this many bytes.
constexpr qsizetype kMostNameBytes = 15;

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

using Buffer = std::array<char, 1024>;

/// The beginning of a small file of one process; empty when it is gone.
std::string_view readSmall(int processes, qint32 pid, const char* file, Buffer& buffer) {
  std::array<char, 32> path{};
  std::snprintf(path.data(), path.size(), "%d/%s", pid, file);
  const FileDescriptor opened(::openat(processes, path.data(), O_RDONLY | O_CLOEXEC));
  if (!opened) return {};
  const ssize_t count = SmallFile::readAt(opened.number(), 0, buffer.data(), buffer.size());
  return {buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0};
}

std::optional<qint32> processIdentifier(const char* name) {
  const std::string_view text(name);
  qint32 pid = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), pid);
  if (error != std::errc() || end != text.data() + text.size() || pid <= 0) return std::nullopt;
  return pid;
}

/// The kernel cuts a long name off; the command that the process was started with has the rest.
QString nameOf(int processes, qint32 pid, const QByteArray& kernelName, bool isKernelThread) {
  QByteArray name = kernelName;
  if (kernelName.size() == kMostNameBytes && !isKernelThread) {
    Buffer buffer;
    std::string_view command = readSmall(processes, pid, "cmdline", buffer);
    command = command.substr(0, command.find('\0'));
    command = command.substr(command.rfind('/') + 1);
    if (command.starts_with(kernelName.toStdString())) {
      name = QByteArray(command.data(), static_cast<qsizetype>(command.size()));
    }
  }
  const QString shown = ForeignText::line(QString::fromUtf8(name));
  return shown.isEmpty() ? LinuxProcessSourceWords::tr("Process %1").arg(pid) : shown;
}

[[noreturn]] void refuse(const ProcessReading& process, int code) {
  throw DomainError::invalid(
      LinuxProcessSourceWords::tr("“%1” could not be ended: %2.")
          .arg(process.name, QString::fromLocal8Bit(std::generic_category().message(code).c_str())));
}

}  // namespace

LinuxProcessSource::LinuxProcessSource(const QString& root)
    : root_(root.toStdString()),
      nanosecondsInTick_(1'000'000'000ull / static_cast<quint64>(std::max(1l, ::sysconf(_SC_CLK_TCK)))),
      pageSize_(static_cast<quint64>(std::max(1l, ::sysconf(_SC_PAGESIZE)))) {}

QList<ProcessReading> LinuxProcessSource::read() {
  const Folder folder(::opendir(root_.c_str()));
  if (!folder) return {};
  const int processes = ::dirfd(folder.get());
  QList<ProcessReading> readings;
  readings.reserve(known_.size());
  QHash<qint32, Known> before;
  before.swap(known_);
  known_.reserve(before.size());
  Buffer buffer;
  while (const dirent* entry = ::readdir(folder.get())) {
    const auto pid = processIdentifier(entry->d_name);
    if (!pid) continue;
    const auto stat = ProcessStat::parse(readSmall(processes, *pid, "stat", buffer));
    if (!stat) continue;
    const auto last = before.constFind(*pid);
    const bool isSame = last != before.constEnd() && last->start == stat->start;
    const auto known = look(processes, *pid, *stat, isSame ? &*last : nullptr);
    if (!known) continue;
    known_.insert(*pid, *known);
    readings.append({*pid, stat->start, known->name, stat->ticks * nanosecondsInTick_, known->memory});
  }
  return readings;
}

std::optional<LinuxProcessSource::Known> LinuxProcessSource::look(int processes, qint32 pid, const ProcessStat& stat,
                                                                  const Known* before) const {
  Known known{.start = stat.start,
              .kernelName = QByteArray(stat.name.data(), static_cast<qsizetype>(stat.name.size())),
              .name = {},
              .residentPages = stat.residentPages};
  // The name changes when a process becomes another program.
  const bool hasName = before && before->kernelName == known.kernelName;
  known.name = hasName ? before->name : nameOf(processes, pid, known.kernelName, stat.isKernelThread);
  // A kernel thread has no memory of its own. What is resident seldom changes while a process sleeps, and what is
  // shared never without it.
  if (before && before->residentPages == stat.residentPages) {
    known.memory = before->memory;
  } else if (!stat.isKernelThread) {
    Buffer buffer;
    const auto pages = ProcessStat::ownPages(readSmall(processes, pid, "statm", buffer));
    if (!pages) return std::nullopt;
    known.memory = *pages * pageSize_;
  }
  return known;
}

void LinuxProcessSource::end(const ProcessReading& process) {
  // Held from before the comparison on, so that the signal cannot hit a later process with the same identifier.
  const FileDescriptor held(static_cast<int>(::syscall(SYS_pidfd_open, process.pid, 0)));
  if (!held && errno == ESRCH) return;
  if (!held) refuse(process, errno);
  const FileDescriptor processes(::open(root_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  Buffer buffer;
  const auto stat = ProcessStat::parse(readSmall(processes.number(), process.pid, "stat", buffer));
  if (!stat || stat->start != process.start) return;
  if (::syscall(SYS_pidfd_send_signal, held.number(), SIGTERM, nullptr, 0) != 0 && errno != ESRCH)
    refuse(process, errno);
}

}  // namespace tarnwick
