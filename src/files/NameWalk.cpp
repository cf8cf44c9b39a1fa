#include "files/NameWalk.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>

#include <QFile>
#include <QHash>
#include <QSet>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <deque>
#include <limits>
#include <memory>
#include <string_view>

#include "base/FileDescriptor.h"
#include "base/SmallFile.h"

namespace tarnwick {
namespace {

constexpr std::string_view kCacheSignature = "Signature: 8a477f597d28d172789f06886806bc55";
/// A folder that was changed so lately may change again within the same second.
constexpr qint64 kSameMoment = 2;
/// So many names lie between two times that the memory of an earlier index is given back.
constexpr quint32 kBetweenForgetting = 50'000;
constexpr quint32 kNoPlace = std::numeric_limits<quint32>::max();
constexpr qint64 kMostMounts = 4 * 1024 * 1024;

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
    0x0BD00BD0L,  // Lustre
    0x786F4256L,  // Folders that a virtual machine shares
    0x0187L,      // What mounts others once it is entered.
};
/// The same as the kernel's list of mounts names them.
constexpr std::array<std::string_view, 16> kFarAwayNames = {"nfs",    "nfs4", "smbfs",  "cifs",    "smb3",  "coda",
                                                            "afs",    "9p",   "ceph",   "autofs",  "ncpfs", "lustre",
                                                            "beegfs", "gpfs", "vboxsf", "virtiofs"};

/// A folder that is in the new index and whose names are still to come.
struct WaitingFolder {
  quint32 place = 0;
  quint32 known = kNoPlace;  ///< Its place in the earlier index.
};

/// A folder that is being read.
struct OpenFolder {
  quint32 place = 0;
  QByteArray path;  ///< Relative to the root; empty for that.
  int descriptor = -1;
  bool isHidden = false;
  QHash<QByteArray, quint32> known;  ///< The folders in it that the earlier index has.
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

bool mayRead(const QByteArray& folder) {
  return ::faccessat(AT_FDCWD, folder.constData(), R_OK | X_OK, AT_EACCESS) == 0;
}

/// When a folder was changed, as the index keeps it: never one of the times that mean something else.
quint32 keptTime(const struct stat& status) {
  const qint64 least = NameIndex::kUnreadable + 1;
  return static_cast<quint32>(std::clamp<qint64>(status.st_mtim.tv_sec, least, std::numeric_limits<quint32>::max()));
}

/// The kernel writes blanks and backslashes as three octal digits.
QByteArray mountPath(QByteArrayView written) {
  QByteArray path;
  for (qsizetype at = 0; at < written.size(); ++at) {
    if (written[at] == '\\' && at + 3 < written.size()) {
      path += static_cast<char>(written.sliced(at + 1, 3).toByteArray().toUInt(nullptr, 8));
      at += 3;
    } else {
      path += written[at];
    }
  }
  return path;
}

QByteArray realPath(const QByteArray& path) {
  const std::unique_ptr<char, void (*)(void*)> real(::realpath(path.constData(), nullptr), &std::free);
  return real ? QByteArray(real.get()) : path;
}

class HomeWalk {
 public:
  HomeWalk(const NameWalk::Request& request, const std::stop_token& stop)
      : request_(request), stop_(stop), builder_(request.root), begin_(request.from), nextGrown_(request.firstGrown) {}

  bool run() {
    struct stat status {};
    if (::stat(request_.root.constData(), &status) != 0 || !S_ISDIR(status.st_mode)) return false;
    device_ = status.st_dev;
    findFarMounts();
    if (request_.known && request_.known->isWhole() && isAllKnown()) return true;
    waiting_.push_back({.place = 0, .known = request_.known ? 0 : kNoPlace});
    while (!waiting_.empty()) {
      const WaitingFolder folder = waiting_.front();
      waiting_.pop_front();
      visit(folder);
      forgetKnown();
      tell();
    }
    return true;
  }

  NameWalk::Result result() {
    NameWalk::Result result;
    result.leftOut = builder_.leftOut();
    result.foldersRead = foldersRead_;
    result.isWhole = unread_ == 0;
    result.isDone = isDone_;
    result.from = from_;
    if (isOther_ || !request_.known || request_.known->isWhole() != result.isWhole)
      result.file = builder_.finish(result.isWhole);
    return result;
  }

 private:
  void findFarMounts() {
    // Mounts are listed by their real paths.
    QByteArray root = realPath(request_.root);
    if (!root.endsWith('/')) root += '/';
    const auto mounts = SmallFile::read(QStringLiteral("/proc/self/mountinfo"), kMostMounts);
    for (const QByteArray& mount : NameWalk::farMounts(mounts.value_or(QByteArray())))
      if (mount.startsWith(root)) farMounts_.insert(mount.mid(root.size()));
  }

  /// Looks at the folders before anything is collected, since most of the time none was changed. The walk goes on at
  /// the first that was. True where there is nothing to be done, or the walk was asked to stop.
  bool isAllKnown() {
    const NameIndex& known = *request_.known;
    for (quint32 place = begin_; place < known.size(); ++place) {
      if (place % kBetweenForgetting == 0) known.forgetRead();
      const quint32 changed = known.changed(place);
      if (!known.traits(place).isFolder || changed < request_.since) continue;
      if (stop_.stop_requested()) {
        stopAt(place);
        return true;
      }
      const QByteArray path = known.path(place);
      if (NameWalk::isAvoided(relative(path)) || isAsKnown(path, changed)) continue;
      known.forgetRead();
      begin_ = place;
      return false;
    }
    return true;
  }

  bool isAsKnown(const QByteArray& path, quint32 changed) const {
    const bool isFar = farMounts_.contains(relative(path));
    if (changed == NameIndex::kUnreadable) return isFar || !mayRead(path);
    return !isFar && timeOf(path, path == request_.root) == changed;
  }

  /// Its path below the root; empty for the root itself.
  QByteArray relative(const QByteArray& path) const {
    const qsizetype root = request_.root.size() + (request_.root.endsWith('/') ? 0 : 1);
    return path.mid(root);
  }

  void visit(const WaitingFolder& folder) {
    const bool isKnown = folder.known != kNoPlace;
    const quint32 changed = isKnown ? request_.known->changed(folder.known) : NameIndex::kUnread;
    const bool wasRead = changed != NameIndex::kUnread;
    if (wasRead && (folder.known < begin_ || changed < request_.since)) return takeKnown(folder);
    if (stop_.stop_requested()) {
      stopAt(folder.place);
      if (!wasRead) ++unread_;
      if (isKnown) takeKnown(folder);
      return;
    }
    const QByteArray path = builder_.path(folder.place);
    if (wasRead && isAsKnown(path, changed)) return takeKnown(folder);
    const bool isFar = farMounts_.contains(relative(path));
    const quint32 kept = isFar ? NameIndex::kUnreadable : read(folder, path);
    builder_.setChanged(folder.place, kept);
    if (kept == NameIndex::kUnread) ++unread_;
    isOther_ = true;
  }

  /// The next walk goes on from here.
  void stopAt(quint32 place) {
    if (isDone_) from_ = place;
    isDone_ = false;
  }

  static quint32 timeOf(const QByteArray& path, bool isRoot) {
    struct stat status {};
    const int failed = isRoot ? ::stat(path.constData(), &status) : ::lstat(path.constData(), &status);
    return failed == 0 && S_ISDIR(status.st_mode) ? keptTime(status) : NameIndex::kUnreadable;
  }

  /// What the earlier index has of a folder, as it is.
  void takeKnown(const WaitingFolder& folder) {
    builder_.setChanged(folder.place, request_.known->changed(folder.known));
    const auto [first, end] = request_.known->contentOf(folder.known);
    for (quint32 place = first; place < end; ++place) {
      const auto added = builder_.add(folder.place, *request_.known, place);
      if (added && builder_.traits(*added).isFolder) wait(*added, place);
    }
  }

  void wait(quint32 place, quint32 known) {
    if (!NameWalk::isAvoided(relative(builder_.path(place)))) waiting_.push_back({place, known});
  }

  /// Adds what is in a folder, and gives the time to keep for it.
  quint32 read(const WaitingFolder& folder, const QByteArray& path) {
    const int link = folder.place == 0 ? 0 : O_NOFOLLOW;
    FileDescriptor opened(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC | link));
    struct stat status {};
    if (!opened || ::fstat(opened.number(), &status) != 0) return NameIndex::kUnreadable;
    if (status.st_dev != device_ && isFarAway(opened.number(), status.st_dev)) return NameIndex::kUnreadable;
    const bool mayChange = status.st_mtim.tv_sec > std::time(nullptr) - kSameMoment;
    const quint32 kept = keptTime(status) - (mayChange ? 1 : 0);
    ++foldersRead_;
    if (isCache(opened.number())) return kept;
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(::fdopendir(opened.number()), &::closedir);
    if (!listing) return NameIndex::kUnreadable;
    opened.release();
    const OpenFolder open{.place = folder.place,
                          .path = relative(path),
                          .descriptor = ::dirfd(listing.get()),
                          .isHidden = builder_.traits(folder.place).isHidden,
                          .known = knownFolders(folder)};
    while (const dirent* entry = ::readdir(listing.get())) {
      if (stop_.stop_requested()) {
        // Half of it is in the index, so it is the first to be read again.
        stopAt(folder.place);
        return NameIndex::kUnread;
      }
      const QByteArray name(entry->d_name);
      if (name != "." && name != "..") take(open, name);
    }
    return kept;
  }

  QHash<QByteArray, quint32> knownFolders(const WaitingFolder& folder) const {
    QHash<QByteArray, quint32> known;
    if (folder.known == kNoPlace) return known;
    const auto [first, end] = request_.known->contentOf(folder.known);
    for (quint32 place = first; place < end; ++place)
      if (request_.known->traits(place).isFolder) known.insert(request_.known->name(place), place);
    return known;
  }

  void take(const OpenFolder& folder, const QByteArray& name) {
    const QByteArray path = folder.path.isEmpty() ? name : folder.path + '/' + name;
    struct stat status {};
    const bool isFar = !farMounts_.isEmpty() && farMounts_.contains(path);
    constexpr int kAsItIs = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
    if (!isFar && ::fstatat(folder.descriptor, name.constData(), &status, kAsItIs) != 0) return;
    const bool isFolder = isFar || S_ISDIR(status.st_mode);
    if (!isFolder && !S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode)) return;
    const bool isHidden = folder.isHidden || name.startsWith('.');
    const bool isEntered = isFolder && !NameWalk::isAvoided(path);
    const qint64 changed = isEntered ? NameIndex::kUnread : status.st_mtim.tv_sec;
    const auto place = builder_.add(folder.place, name, changed, {isFolder, isHidden});
    if (place && isEntered) waiting_.push_back({*place, folder.known.value(name, kNoPlace)});
  }

  /// What is known is read in the order of its places, and what was read is not read again.
  void forgetKnown() {
    if (!request_.known || builder_.size() < nextForgotten_) return;
    nextForgotten_ = builder_.size() + kBetweenForgetting;
    request_.known->forgetRead();
  }

  void tell() {
    if (!request_.grown || builder_.size() < nextGrown_ || stop_.stop_requested()) return;
    if (request_.known && (request_.known->isWhole() || builder_.size() < request_.known->size())) return;
    nextGrown_ = builder_.size() * 2;
    request_.grown(builder_);
  }

  const NameWalk::Request& request_;
  const std::stop_token& stop_;
  NameIndex::Builder builder_;
  std::deque<WaitingFolder> waiting_;
  QSet<QByteArray> farMounts_;  ///< Below the root, and relative to it.
  dev_t device_ = 0;
  qsizetype foldersRead_ = 0;
  qsizetype unread_ = 0;
  quint32 from_ = 0;
  bool isDone_ = true;
  quint32 begin_;  ///< Folders before this place of the earlier index are as it has them.
  quint32 nextGrown_;
  quint32 nextForgotten_ = kBetweenForgetting;
  bool isOther_ = false;  ///< Whether something is not as the earlier index has it.
};

}  // namespace

bool NameWalk::isAvoided(const QByteArray& path) {
  if (path == ".cache" || path == ".local/share/Trash") return true;
  const QByteArray name = path.mid(path.lastIndexOf('/') + 1);
  return name == ".git" || name == "node_modules" || name == "__pycache__" || name == ".Trash" ||
         name.startsWith(".Trash-");
}

bool NameWalk::isEntered(const QByteArray& root, const QByteArray& path) {
  const QByteArray relative = path.mid(root.size() + (root.endsWith('/') ? 0 : 1));
  if (isAvoided(relative)) return false;
  const FileDescriptor folder(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC | O_NOFOLLOW));
  return folder && !isCache(folder.number());
}

QByteArrayList NameWalk::farMounts(QByteArrayView mountInfo) {
  QByteArrayList far;
  for (const QByteArray& line : mountInfo.toByteArray().split('\n')) {
    // Number, parent, device, root, path, options, any number of further ones, "-", kind, source, options.
    const QByteArrayList words = line.split(' ');
    const qsizetype dash = words.indexOf("-", 6);
    if (dash < 0 || dash + 1 >= words.size()) continue;
    const QByteArray& kind = words[dash + 1];
    const bool isServed = kind == "fuse" || kind.startsWith("fuse.");
    const bool isFar =
        isServed ? words[2].startsWith("0:")
                 : std::ranges::find(kFarAwayNames, std::string_view(kind.constData())) != kFarAwayNames.end();
    if (isFar) far << mountPath(words[4]);
  }
  return far;
}

std::optional<NameWalk::Result> NameWalk::read(const Request& request, const std::stop_token& stop) {
  HomeWalk walk(request, stop);
  if (!walk.run()) return std::nullopt;
  return walk.result();
}

}  // namespace tarnwick
