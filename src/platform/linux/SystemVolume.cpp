#include "platform/linux/SystemVolume.h"

#include <linux/magic.h>
#include <sys/statvfs.h>
#include <sys/vfs.h>

namespace tarnwick {

bool SystemVolume::isReadOnlyImage() const {
  // Compared in 32 bits: the kernel's numbers are, and some have the highest bit set.
  switch (static_cast<unsigned>(fileSystem)) {
    case SQUASHFS_MAGIC:
    case EROFS_SUPER_MAGIC_V1:
    case ISOFS_SUPER_MAGIC:
    case CRAMFS_MAGIC:
      return true;
    case OVERLAYFS_SUPER_MAGIC:
      return readOnly;
    default:
      return false;
  }
}

std::optional<SystemVolume> SystemVolume::at(const std::string& folder) {
  struct statfs facts {};
  if (::statfs(folder.c_str(), &facts) != 0) return std::nullopt;
  const double block = static_cast<double>(facts.f_frsize > 0 ? facts.f_frsize : facts.f_bsize);
  return SystemVolume{.fileSystem = static_cast<long>(facts.f_type),
                      .readOnly = (static_cast<unsigned long>(facts.f_flags) & ST_RDONLY) != 0,
                      .space = {.capacity = static_cast<double>(facts.f_blocks) * block,
                                .available = static_cast<double>(facts.f_bavail) * block}};
}

std::optional<DiskReading> SystemVolume::chosen(const std::optional<SystemVolume>& root,
                                                const std::optional<SystemVolume>& home) {
  if (root && !(root->isReadOnlyImage() && home)) return root->space;
  if (home) return home->space;
  return std::nullopt;
}

}  // namespace tarnwick
