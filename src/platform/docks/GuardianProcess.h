#pragma once

#include <QString>

#include "base/FileDescriptor.h"
#include "dock/ports/DockGuard.h"

namespace tarnwick {

/// The guard as a tiny process in a session of its own. It holds one end of a connection; when the other end goes
/// without a word, it runs the restoring mode of the program. A guardian that cannot be started is missed by nobody
/// until then.
class GuardianProcess final : public DockGuard {
 public:
  /// `program` is what restores, usually this program itself.
  explicit GuardianProcess(const QString& program);

  void watch(const QString& directory) override;
  void release() override;

 private:
  QString program_;
  FileDescriptor line_;
};

}  // namespace tarnwick
