#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "base/DurableFile.h"
#include "base/HandoverLock.h"

namespace tarnwick {

/// The file of a journal of what belongs to others and is changed for as long as we run. Other processes work on the
/// same file: each change is made under the lock of docs/handover.md. Belongs to one thread. `RecoveryJournal` holds
/// the records of it.
class RecoveryFile {
 public:
  struct Terms {
    QString directory;  ///< Need not exist.
    QLatin1StringView name;
    qint64 mostBytes = 0;
    std::chrono::milliseconds patience{};  ///< How long another process that works on it is waited for.
    QString busy;                          ///< The sentence for one that works on it for longer.
    QString tooLarge;                      ///< The sentence for a file of more bytes.
    QString invalid;                       ///< The sentence for records that cannot be.
  };

  explicit RecoveryFile(Terms terms);

  const QString& path() const { return path_; }
  const Terms& terms() const { return terms_; }

  /// Throws DomainError: `busy`, or what HandoverLock says.
  HandoverLock::Hold hold();
  /// Whether it is another file than was read or written last.
  bool hasChanged() const { return DurableFile::stamp(path_) != stamp_; }
  /// What is in it; absent where there is none. Throws DomainError where it cannot be read.
  std::optional<QByteArray> read();
  /// Returns once the disk has it. Throws DomainError.
  void write(const QByteArray& content);

 private:
  Terms terms_;
  QString path_;
  HandoverLock lock_;
  std::optional<DurableFile::Stamp> stamp_;
};

}  // namespace tarnwick
