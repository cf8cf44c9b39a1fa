#include "usage/ClaudeRecordFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <memory>
#include <optional>
#include <tuple>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "base/SmallFile.h"
#include "usage/UsageReaderWords.h"

namespace tarnwick {

namespace {

constexpr std::string_view kRecordEnding = ".json";
constexpr double kYears = 1e9;  ///< Seconds, some thirty of them.
constexpr std::uint32_t kFileEvents =
    IN_CREATE | IN_MODIFY | IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_ATTRIB;
/// After these nothing is known of the folder any more.
constexpr std::uint32_t kLostEvents = IN_Q_OVERFLOW | IN_IGNORED | IN_UNMOUNT | IN_DELETE_SELF | IN_MOVE_SELF;

struct CloseRecords {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

[[noreturn]] void throwUnreadable() {
  throw DomainError::invalid(UsageReaderWords::tr("The folder with Claude’s activity could not be read."));
}

bool isSameFolder(const struct stat& one, const struct stat& other) {
  return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

bool isSameMoment(const timespec& one, const timespec& other) {
  return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

bool counts(const ClaudeActivityRecord& record, double present) {
  const double age = present - record.time;
  return age >= 0 && age < ClaudeActivity::kForgotten;
}

/// The moments at which a record is shown otherwise: it counts, is no longer recent, counts no more. One that the clock
/// does not come near in years never does.
void noteMoments(const ClaudeActivityRecord& record, double present, std::optional<double>& earliest) {
  for (const double age : {0.0, ClaudeActivity::kRecent, ClaudeActivity::kForgotten}) {
    const double moment = record.time + age;
    if (moment > present && moment < present + kYears && (!earliest || moment < *earliest)) earliest = moment;
  }
}

}  // namespace

ClaudeRecordFolder::ClaudeRecordFolder(const QString& path) : path_(QFile::encodeName(path)) {}

qint64 ClaudeRecordFolder::opened() const {
  const std::scoped_lock lock(mutex_);
  return opened_;
}

ClaudeActivity::Found ClaudeRecordFolder::find(const QDateTime& now, const std::stop_token& stop) {
  const std::scoped_lock lock(mutex_);
  throwIfStopped(stop);
  struct stat folder {};
  if (::stat(path_.constData(), &folder) != 0) {
    isWhole_ = false;
    if (errno == ENOENT) return {};
    throwUnreadable();
  }
  const double present = ClaudeActivity::secondsOf(now);
  // Of what another machine does to a shared folder the kernel tells nothing, but the folder shows it.
  const bool isUntold = !takeEvents() && !isSameMoment(folder.st_mtim, folder_.st_mtim);
  if (isUntold || !isSameFolder(folder, folder_) || present < present_) isWhole_ = false;
  folder_ = folder;
  present_ = present;
  if (isWhole_)
    readChanged(stop);
  else
    readAll(present, stop);
  return foundAt(present);
}

bool ClaudeRecordFolder::takeEvents() {
  bool isTold = false;
  alignas(inotify_event) char buffer[16384];
  while (events_) {
    const ssize_t count = ::read(events_.number(), buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    isTold = true;
    for (const char* at = buffer; at < buffer + count;) {
      inotify_event event;
      std::memcpy(&event, at, sizeof event);
      const std::string name = event.len > 0 ? std::string(at + sizeof event) : std::string();
      if (event.mask & kLostEvents || name.empty())
        isWhole_ = false;
      else if (name.ends_with(kRecordEnding))
        changed_.insert(name);
      at += sizeof event + event.len;
    }
  }
  return isTold;
}

void ClaudeRecordFolder::startEvents() {
  events_ = FileDescriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (events_ && ::inotify_add_watch(events_.number(), path_.constData(),
                                     kFileEvents | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR) < 0)
    events_ = FileDescriptor();
}

/// Reads a file, if it is an ordinary one that small: nothing waits for it and nothing is followed.
void ClaudeRecordFolder::read(int folder, const std::string& name) {
  ++opened_;
  const auto bytes = SmallFile::readUnlinked(folder, name.c_str(), ClaudeActivityRecord::kMostFileBytes);
  const auto record = bytes
                          ? ClaudeActivityRecord::decoded({bytes->constData(), static_cast<std::size_t>(bytes->size())})
                          : std::nullopt;
  if (record)
    records_.insert_or_assign(name, *record);
  else
    records_.erase(name);
}

void ClaudeRecordFolder::readAll(double present, const std::stop_token& stop) {
  isWhole_ = false;
  records_.clear();
  changed_.clear();
  startEvents();  // Before the folder is looked into, so that nothing goes unseen between the two.
  const std::unique_ptr<DIR, CloseRecords> folder(::opendir(path_.constData()));
  if (!folder) {
    if (errno == ENOENT) return;
    throwUnreadable();
  }
  qsizetype counting = 0;
  for (;;) {
    throwIfStopped(stop);
    errno = 0;
    const dirent* entry = ::readdir(folder.get());
    if (!entry && errno != 0) throwUnreadable();
    if (!entry) break;
    const std::string name = entry->d_name;
    if (!name.ends_with(kRecordEnding)) continue;
    read(::dirfd(folder.get()), name);
    const auto record = records_.find(name);
    if (record == records_.end()) continue;
    if (counts(record->second, present) && ++counting > ClaudeActivity::kMostRecords) return;
    // What is forgotten never counts again.
    if (present - record->second.time >= ClaudeActivity::kForgotten) records_.erase(record);
  }
  isWhole_ = static_cast<bool>(events_);
}

void ClaudeRecordFolder::readChanged(const std::stop_token& stop) {
  if (changed_.empty()) return;
  const FileDescriptor folder(::open(path_.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder) throwUnreadable();
  while (!changed_.empty()) {
    throwIfStopped(stop);
    read(folder.number(), *changed_.begin());
    changed_.erase(changed_.begin());
  }
}

ClaudeActivity::Found ClaudeRecordFolder::foundAt(double present) {
  std::erase_if(records_, [&](const auto& each) { return present - each.second.time >= ClaudeActivity::kForgotten; });
  ClaudeActivity::Found found;
  std::optional<double> earliest;
  for (const auto& [name, record] : records_) {
    noteMoments(record, present, earliest);
    if (counts(record, present)) found.records.append(record);
  }
  if (found.records.size() > ClaudeActivity::kMostRecords)
    throw DomainError::invalid(
        UsageReaderWords::tr("More than 1,000 active Claude sessions; activity is unavailable."));
  // Of two of one moment the order is the same at each reading.
  std::ranges::sort(found.records, std::greater(),
                    [](const ClaudeActivityRecord& record) { return std::tie(record.time, record.session); });
  if (earliest) found.nextChange = ClaudeActivity::dateOf(*earliest);
  return found;
}

}  // namespace tarnwick
