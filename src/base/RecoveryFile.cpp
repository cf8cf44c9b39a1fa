#include "base/RecoveryFile.h"

#include <QDir>
#include <cerrno>
#include <system_error>

#include "base/DomainError.h"
#include "base/SmallFile.h"

namespace tarnwick {

RecoveryFile::RecoveryFile(Terms terms)
    : terms_(std::move(terms)), path_(QDir(terms_.directory).filePath(terms_.name)), lock_(terms_.directory) {}

HandoverLock::Hold RecoveryFile::hold() {
  auto held = lock_.take(terms_.patience);
  if (!held) throw DomainError::invalid(terms_.busy);
  return std::move(*held);
}

std::optional<QByteArray> RecoveryFile::read() {
  stamp_ = DurableFile::stamp(path_);
  auto bytes = SmallFile::read(path_, terms_.mostBytes);
  if (bytes) return bytes;
  const int reason = errno;
  if (reason == ENOENT) return std::nullopt;
  if (reason == EFBIG) throw DomainError::invalid(terms_.tooLarge);
  throw DomainError::invalid(QString::fromLocal8Bit(std::generic_category().message(reason).c_str()));
}

void RecoveryFile::write(const QByteArray& content) {
  DurableFile::write(content, path_);
  stamp_ = DurableFile::stamp(path_);
}

}  // namespace tarnwick
