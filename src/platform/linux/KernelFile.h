#pragma once

#include <QString>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwick {

/// A file that the kernel writes anew at every reading: opened once, then read from its start again and again, into one
/// buffer. A file that isn't there (yet) is tried again at the next reading.
class KernelFile {
 public:
  explicit KernelFile(std::string path) : path_(std::move(path)) {}
  ~KernelFile();
  KernelFile(const KernelFile&) = delete;
  KernelFile& operator=(const KernelFile&) = delete;

  /// The start of the paths of all files in a folder: clean, with a slash at its end.
  static std::string folderOf(const QString& path);

  /// Up to `limit` bytes of text, valid until the next call; none when the file can't be read.
  std::optional<std::string_view> read(std::size_t limit = std::size_t{1} << 20);

 private:
  void close();

  std::string path_;
  std::string buffer_;
  int descriptor_ = -1;
};

}  // namespace tarnwick
