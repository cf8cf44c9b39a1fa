#include "files/NameWalk.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <vector>

#include "base/FileDescriptor.h"
#include "base/SmallFile.h"
#include "files/NameIndex.h"

namespace tarnwick {
namespace {

constexpr std::string_view kCacheSignature = "Signature: 8a477f597d28d172789f06886806bc55";

// What kind of file system a folder is on, as statfs gives it.
constexpr long kFuse = 0x65735546;
constexpr std::array kFarAway = {
    0x6969L,      // NFS
    0x517BL,      // SMB
    0xFE534D42L,  // SMB 2
    0xFF534D42L,  // CIFS
    0x73757245L,  // Coda
    0x5346414FL,  // AFS
    0x01021997L,  // 9P
    0x00C36400L,  // Ceph
    0x0187L,      // What mounts others once it is entered.
};

/// A folder that is still to be read.
struct WaitingFolder {
  QByteArray path;  ///< Relative to the root; empty for that.
  quint32 place = 0;
  bool isHidden = false;
  dev_t device = 0;
};

bool isFarAway(int folder, dev_t device) {
  struct statfs facts {};
  if (::fstatfs(folder, &facts) != 0) return true;
  const auto kind = static_cast<long>(facts.f_type);
  // A program serves such a file system; one without a disk of this machine shows another machine's.
  if (kind == kFuse) return major(device) == 0;
  return std::ranges::find(kFarAway, kind) != kFarAway.end();
}

bool isCache(int folder) {
  const FileDescriptor tag(::openat(folder, "CACHEDIR.TAG", O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!tag || ::fstat(tag.number(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  std::array<char, kCacheSignature.size()> begin{};
  const ssize_t count = SmallFile::readAt(tag.number(), 0, begin.data(), begin.size());
  return count == static_cast<ssize_t>(begin.size()) && std::string_view(begin.data(), begin.size()) == kCacheSignature;
}

class HomeWalk {
 public:
  HomeWalk(const QByteArray& root, const std::stop_token& stop) : root_(root), stop_(stop), builder_(root) {}

  bool run() {
    struct stat status {};
    if (::stat(root_.constData(), &status) != 0 || !S_ISDIR(status.st_mode)) return false;
    waiting_.push_back({.path = {}, .device = status.st_dev});
    while (!waiting_.empty() && !stop_.stop_requested()) {
      const WaitingFolder folder = std::move(waiting_.back());
      waiting_.pop_back();
      read(folder);
    }
    return !stop_.stop_requested();
  }
  NameIndex::Builder& builder() { return builder_; }

 private:
  void read(const WaitingFolder& folder) {
    const bool isRoot = folder.path.isEmpty();
    const QByteArray path = isRoot ? root_ : root_ + '/' + folder.path;
    const int link = isRoot ? 0 : O_NOFOLLOW;
    FileDescriptor opened(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC | link));
    struct stat status {};
    if (!opened || ::fstat(opened.number(), &status) != 0) return;
    if (!isRoot && status.st_dev != folder.device && isFarAway(opened.number(), status.st_dev)) return;
    if (isCache(opened.number())) return;
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(::fdopendir(opened.number()), &::closedir);
    if (!listing) return;
    opened.release();
    while (const dirent* entry = ::readdir(listing.get())) {
      if (stop_.stop_requested()) return;
      const QByteArray name(entry->d_name);
      if (name != "." && name != "..") take(folder, name, ::dirfd(listing.get()), status.st_dev);
    }
  }

  void take(const WaitingFolder& folder, const QByteArray& name, int at, dev_t device) {
    struct stat status {};
    if (::fstatat(at, name.constData(), &status, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) != 0) return;
    const bool isFolder = S_ISDIR(status.st_mode);
    if (!isFolder && !S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode)) return;
    const bool isHidden = folder.isHidden || name.startsWith('.');
    const auto place = builder_.add(folder.place, name, status.st_mtim.tv_sec, {isFolder, isHidden});
    if (!place || !isFolder) return;
    const QByteArray path = folder.path.isEmpty() ? name : folder.path + '/' + name;
    if (!NameWalk::isAvoided(path)) waiting_.push_back({path, *place, isHidden, device});
  }

  QByteArray root_;
  const std::stop_token& stop_;
  NameIndex::Builder builder_;
  std::vector<WaitingFolder> waiting_;
};

}  // namespace

bool NameWalk::isAvoided(const QByteArray& path) {
  if (path == ".cache" || path == ".local/share/Trash") return true;
  const QByteArray name = path.mid(path.lastIndexOf('/') + 1);
  return name == ".git" || name == "node_modules" || name == "__pycache__" || name == ".Trash" ||
         name.startsWith(".Trash-");
}

std::optional<NameWalk::Result> NameWalk::read(const QByteArray& root, const std::stop_token& stop) {
  HomeWalk walk(root, stop);
  if (!walk.run()) return std::nullopt;
  Result result;
  result.leftOut = walk.builder().leftOut();
  result.file = walk.builder().finish();
  return result;
}

}  // namespace tarnwick
