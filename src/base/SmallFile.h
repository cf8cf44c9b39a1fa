#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <QString>
#include <cstddef>
#include <optional>

namespace tarnwick {

/// Reading with a limit: no more than that is read or held, whatever a file says about its size and however it grows
/// meanwhile.
struct SmallFile {
  /// The content of a regular file of at most `most` bytes; absent otherwise, and `errno` says why: EFBIG where it is
  /// larger, EISDIR or EINVAL where it is no file. Never waits for a pipe.
  static std::optional<QByteArray> read(const QString& path, qint64 most);
  /// The same of a file in an open folder, or in AT_FDCWD, that is no symbolic link: errno is ELOOP then.
  static std::optional<QByteArray> readUnlinked(int folder, const char* name, qint64 most);
  /// The same of a file that is open.
  static std::optional<QByteArray> read(int descriptor, qint64 most);
  /// Fills `into` from a place of a file on, until it is full or the file ends; how many bytes came, or -1 and `errno`.
  static ssize_t readAt(int descriptor, off_t from, char* into, std::size_t space);
};

}  // namespace tarnwick
