#include "platform/linux/KernelFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDir>
#include <algorithm>

#include "base/SmallFile.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFirstBuffer = 4096;

}  // namespace

std::string KernelFile::folderOf(const QString& path) {
  auto folder = QDir::cleanPath(path).toStdString();
  if (!folder.ends_with('/')) folder += '/';
  return folder;
}

KernelFile::~KernelFile() { close(); }

void KernelFile::close() {
  if (descriptor_ >= 0) ::close(descriptor_);
  descriptor_ = -1;
}

std::optional<std::string_view> KernelFile::read(std::size_t limit) {
  if (descriptor_ < 0) descriptor_ = ::open(path_.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor_ < 0) return std::nullopt;
  std::size_t length = 0;
  while (length < limit) {
    if (buffer_.size() == length) buffer_.resize(std::max(kFirstBuffer, buffer_.size() * 2));
    const std::size_t space = std::min(buffer_.size(), limit) - length;
    const ssize_t count = SmallFile::readAt(descriptor_, static_cast<off_t>(length), buffer_.data() + length, space);
    if (count < 0) {
      // The device behind the file may be gone; a new one under the same path needs a new descriptor.
      close();
      return std::nullopt;
    }
    length += static_cast<std::size_t>(count);
    if (static_cast<std::size_t>(count) < space) break;
  }
  return std::string_view(buffer_).substr(0, length);
}

}  // namespace tarnwick
