#include "platform/ical/FolderWatch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <QFile>
#include <array>
#include <cstring>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 kGone = IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr quint32 kFiles = IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB | kGone;
// A home folder is a busy place; only what comes into it is of interest, or may be read from now on.
constexpr quint32 kComing = IN_CREATE | IN_MOVED_TO | IN_ATTRIB | kGone;

}  // namespace

bool FolderWatch::open() {
  if (inotify_) return true;
  inotify_ = FileDescriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (!inotify_) return false;
  notifier_ = std::make_unique<QSocketNotifier>(inotify_.number(), QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, &FolderWatch::read);
  return true;
}

int FolderWatch::add(const QString& folder, bool isAwaiting) {
  return ::inotify_add_watch(inotify_.number(), QFile::encodeName(folder).constData(), isAwaiting ? kComing : kFiles);
}

bool FolderWatch::watch(const QStringList& folders, const QHash<QString, QSet<QString>>& awaited) {
  if (!open()) return false;
  QHash<int, Watch> now;
  bool isNew = false;
  const auto put = [&](const QString& folder, const QSet<QString>& names) {
    const int number = add(folder, !names.isEmpty());
    if (number < 0 || now.contains(number)) return;
    isNew = isNew || !watches_.contains(number) || watches_.value(number).awaited != names;
    now.insert(number, {folder, names});
  };
  for (const QString& folder : folders) put(folder, {});
  for (auto it = awaited.begin(); it != awaited.end(); ++it) {
    if (!folders.contains(it.key())) put(it.key(), it.value());
  }
  for (auto it = watches_.begin(); it != watches_.end(); ++it) {
    if (!now.contains(it.key())) ::inotify_rm_watch(inotify_.number(), it.key());
  }
  watches_ = std::move(now);
  return isNew;
}

bool FolderWatch::matters(int number, quint32 what, const QByteArray& name) const {
  if ((what & IN_Q_OVERFLOW) != 0) return true;
  const auto watch = watches_.constFind(number);
  if (watch == watches_.constEnd()) return false;
  if ((what & (IN_DELETE_SELF | IN_MOVE_SELF)) != 0) return true;
  if (!watch->awaited.isEmpty()) return watch->awaited.contains(QFile::decodeName(name));
  // Files that are written before they get their place have other names.
  if ((what & IN_ISDIR) != 0) return !name.startsWith('.');
  return name.right(4).toLower() == ".ics" || name == "displayname" || name == "color";
}

void FolderWatch::read() {
  alignas(inotify_event) std::array<char, 16 * 1024> buffer;
  bool isChanged = false;
  for (;;) {
    const ssize_t count = ::read(inotify_.number(), buffer.data(), buffer.size());
    if (count <= 0) break;
    for (std::size_t at = 0; at < static_cast<std::size_t>(count);) {
      inotify_event event{};
      std::memcpy(&event, buffer.data() + at, sizeof event);
      const char* name = buffer.data() + at + sizeof event;
      isChanged = matters(event.wd, event.mask, event.len ? QByteArray(name) : QByteArray()) || isChanged;
      if ((event.mask & IN_IGNORED) != 0) watches_.remove(event.wd);
      at += sizeof event + event.len;
    }
  }
  if (isChanged) Q_EMIT changed();
}

}  // namespace tarnwick
