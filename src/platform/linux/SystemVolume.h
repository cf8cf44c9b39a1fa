#pragma once

#include <optional>
#include <string>

#include "system/ports/SystemCounters.h"

namespace tarnwick {

/// A mounted volume as the kernel describes it.
struct SystemVolume {
  long fileSystem = 0;  ///< the kernel's magic number
  bool readOnly = false;
  DiskReading space;

  /// An image that is full by nature (squashfs and its like, a composed overlay): how full it is says nothing.
  bool isReadOnlyImage() const;

  static std::optional<SystemVolume> at(const std::string& folder);

  /// The volume that the disk tile speaks of: the root's, unless it is such an image and the home folder's is known.
  static std::optional<DiskReading> chosen(const std::optional<SystemVolume>& root,
                                           const std::optional<SystemVolume>& home);
};

}  // namespace tarnwick
