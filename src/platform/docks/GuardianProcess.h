#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QTimer>
#include <chrono>
#include <memory>

#include "base/FileDescriptor.h"
#include "dock/ports/DockGuard.h"

class QSocketNotifier;

namespace tarnwick {

/// The guard as a tiny process in a session of its own. It holds one end of a connection; when the other end goes
/// without a word, it runs the restoring mode of the program on the very file that it was given. One that dies is
/// replaced, and standard error says so. A guardian that cannot be started is missed by nobody until then.
class GuardianProcess final : public DockGuard {
 public:
  /// How often one that dies is replaced: at most so many times within each `window`; after that it waits for the next.
  struct Pace {
    int replacements = 3;
    std::chrono::milliseconds window{60'000};
  };

  /// `program` is what restores, usually this program itself.
  explicit GuardianProcess(const QString& program) : GuardianProcess(program, Pace()) {}
  GuardianProcess(const QString& program, Pace pace);
  ~GuardianProcess() override;

  void watch(const QString& recoveryFile) override;
  void release() override;

 private:
  void start();
  void listen();
  void replace();

  QString program_;
  Pace pace_;
  QString directory_;
  FileDescriptor file_;
  FileDescriptor line_;
  std::unique_ptr<QSocketNotifier> broken_;
  QElapsedTimer windowBegan_;
  int replaced_ = 0;  ///< Within the window.
  QTimer nextWindow_;
};

}  // namespace tarnwick
