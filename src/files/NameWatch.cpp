#include "files/NameWatch.h"

#include <sys/inotify.h>

#include <QFile>
#include <array>
#include <cstring>

namespace tarnwick {
namespace {

constexpr uint32_t kWatched = IN_CREATE | IN_MOVED_TO | IN_CLOSE_WRITE | IN_ONLYDIR | IN_DONT_FOLLOW | IN_EXCL_UNLINK;
constexpr std::size_t kEventBytes = 16 * 1024;
/// So much is read at once, so that a folder in which things come without end holds nothing up.
constexpr int kMostReads = 4;

}  // namespace

std::unique_ptr<NameWatch> NameWatch::begin(const QByteArrayList& folders) {
  FileDescriptor events(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (!events) return nullptr;
  std::unique_ptr<NameWatch> watch(new NameWatch(std::move(events)));
  for (const QByteArray& folder : folders) {
    const int number = ::inotify_add_watch(watch->descriptor(), folder.constData(), kWatched);
    if (number >= 0) watch->folders_.insert(number, folder.endsWith('/') ? folder : folder + '/');
  }
  return watch;
}

QStringList NameWatch::take() {
  QStringList paths;
  alignas(inotify_event) std::array<char, kEventBytes> bytes;
  for (int i = 0; i < kMostReads; ++i) {
    const ssize_t count = ::read(descriptor(), bytes.data(), bytes.size());
    if (count <= 0) break;
    for (const char* at = bytes.data(); at < bytes.data() + count;) {
      inotify_event event;
      std::memcpy(&event, at, sizeof event);
      const auto folder = folders_.constFind(event.wd);
      if (event.len > 0 && folder != folders_.cend()) {
        const QString path = QFile::decodeName(*folder + (at + sizeof event));
        paths.removeOne(path);
        paths.append(path);
      }
      if (event.mask & IN_IGNORED) folders_.remove(event.wd);
      at += sizeof event + event.len;
    }
  }
  return paths;
}

}  // namespace tarnwick
