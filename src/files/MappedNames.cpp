#include "files/MappedNames.h"

#include <utility>

namespace tarnwick {

std::shared_ptr<const MappedNames::Names> MappedNames::get() {
  const std::lock_guard mapping(mapping_);
  const auto stamp = DurableFile::stamp(file_);
  {
    const std::lock_guard lock(mutex_);
    if (!isOpen_) return nullptr;
    if (names_ && stamp == stamp_) return names_;
  }
  // Without the second lock: the main thread never waits for the disk.
  auto names = std::make_shared<Names>();
  names->index = NameIndex::open(file_, root_);
  if (!names->index) return nullptr;
  names->index->warm();
  names->newest.resize(static_cast<std::size_t>(names->index->size()));
  for (const quint32 place : names->index->newestFolders(kMostFolders)) names->newest[place] = true;
  const std::lock_guard lock(mutex_);
  if (!isOpen_) return nullptr;
  names_ = names;
  stamp_ = stamp;
  return names;
}

void MappedNames::open() {
  const std::lock_guard lock(mutex_);
  isOpen_ = true;
}

std::shared_ptr<const MappedNames::Names> MappedNames::close() {
  const std::lock_guard lock(mutex_);
  isOpen_ = false;
  return std::exchange(names_, nullptr);
}

}  // namespace tarnwick
