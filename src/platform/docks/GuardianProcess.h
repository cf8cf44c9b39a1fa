#pragma once

#include <QString>
#include <memory>

#include "base/FileDescriptor.h"
#include "dock/ports/DockGuard.h"

class QSocketNotifier;

namespace tarnwick {

/// The guard as a tiny process in a session of its own. It holds one end of a connection; when the other end goes
/// without a word, it runs the restoring mode of the program. One that dies is replaced. A guardian that cannot be
/// started is missed by nobody until then.
class GuardianProcess final : public DockGuard {
 public:
  /// `program` is what restores, usually this program itself.
  explicit GuardianProcess(const QString& program);
  ~GuardianProcess() override;

  void watch(const QString& directory) override;
  void release() override;

 private:
  /// One that cannot live must not be started for ever.
  static constexpr int kReplacements = 3;

  void start();
  void listen();
  void replace();

  QString program_;
  QString directory_;
  FileDescriptor line_;
  std::unique_ptr<QSocketNotifier> broken_;
  int replacements_ = 0;
};

}  // namespace tarnwick
