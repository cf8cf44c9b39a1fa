#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace tarnwick {

/// Files that are whole at every moment: a reader, and a start after a crash, finds the old content or the new one.
/// A path that is a symbolic link stands for what it points to. Every failure is a DomainError that names the file and
/// the system's reason.
struct DurableFile {
  /// Readable and writable by its owner alone.
  static constexpr unsigned kPrivate = 0600;
  /// More than this is not read.
  static constexpr qint64 kMostBytes = 64 * 1024 * 1024;

  /// Replaces the file's content at once. The folder must exist. `mode` are its permissions from the first byte on;
  /// without one an existing file keeps its own and a new one gets the user's default. Only regular files are replaced.
  static void writeAtomically(const QByteArray& data, const QString& path, std::optional<unsigned> mode = std::nullopt);

  /// The same without waiting for the disk, for what need not outlive a loss of power.
  static void writeQuickly(const QByteArray& data, const QString& path, std::optional<unsigned> mode = std::nullopt);

  /// What distinguishes one state of a file from another.
  struct Stamp {
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    qint64 seconds = 0;  ///< When it was changed, like `nanoseconds`.
    qint64 nanoseconds = 0;

    bool operator==(const Stamp&) const = default;
  };
  /// Absent where there is no such file.
  static std::optional<Stamp> stamp(const QString& path);
  /// As `writeAtomically`, unless another program changed the file since it was `before`: then that stays and false is
  /// returned.
  static bool replace(const QByteArray& data, const QString& path, const Stamp& before);

  /// For journals that must be on the disk before the step that they guard: makes missing folders, writes atomically
  /// and privately, and returns once the disk has the file and its folder's entry. The reason is EIO when the disk
  /// can't be asked or doesn't confirm; the file may be there then.
  static void write(const QByteArray& data, const QString& path);

  /// Waits until the disk has what changed in the folder of a file: that it is there, under this name. False when it
  /// can't be asked or doesn't confirm.
  static bool folderReachesDisk(const QString& path);

  /// Removes what writes that were killed left behind beside a file: never what a write under way still needs, in this
  /// process or another, and nothing that is not the user's own.
  static void removeLeftovers(const QString& path);

  /// Makes the folders above a path that are missing, for their owner alone.
  static void makeParent(const QString& path);

  /// The content of a regular file of at most kMostBytes.
  static QByteArray read(const QString& path);
  /// The same, absent when there is no such name at all. A name that leads nowhere (a link to a disk that is not there)
  /// can't be read, which is a failure.
  static std::optional<QByteArray> readIfPresent(const QString& path);

  /// Gives a file or folder another name in the same file system, replacing a file that has it.
  static void rename(const QString& from, const QString& to);
};

}  // namespace tarnwick
