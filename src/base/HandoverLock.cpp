#include "base/HandoverLock.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include "base/DomainError.h"

namespace tarnwick {
namespace {

struct HandoverLockWords {
  Q_DECLARE_TR_FUNCTIONS(HandoverLock)
};

/// No folder, no right to write, no space, no locks in this file system. The user's values come back all the same.
constexpr std::array kWithoutLock{ENOENT, ENOTDIR, EROFS, EACCES, EPERM, ENOSPC, EDQUOT, ENOLCK, ENOSYS, EOPNOTSUPP};

}  // namespace

HandoverLock::HandoverLock(const QString& directory)
    : file_(QDir(directory).filePath(QStringLiteral("native-dock-recovery.lock"))) {}

std::optional<HandoverLock::Hold> HandoverLock::take(std::chrono::milliseconds patience) {
  if (holds_ > 0) return Hold(*this);
  switch (file_.take(patience)) {
    case FileLock::Taking::Held:
      return Hold(*this);
    case FileLock::Taking::OthersHave:
      return std::nullopt;
    case FileLock::Taking::Impossible:
      break;
  }
  if (std::ranges::find(kWithoutLock, file_.error()) != kWithoutLock.end()) return Hold(*this);
  const QString reason = QString::fromLocal8Bit(std::generic_category().message(file_.error()).c_str());
  throw DomainError::invalid(
      HandoverLockWords::tr("The file “%1” could not be locked: %2.").arg(QFileInfo(file_.path()).fileName(), reason));
}

}  // namespace tarnwick
