#pragma once

#include <QString>
#include <memory>

#include "base/FileDescriptor.h"
#include "base/Scheduler.h"
#include "dock/ports/DockGuard.h"

class QSocketNotifier;

namespace tarnwick {

/// The guard as a tiny process in a session of its own. It holds one end of a connection; when the other end goes
/// without a word, it runs the restoring mode of the program on the very file that it was given. One that dies is
/// replaced, and standard error says so. A guardian that cannot be started makes no difference until then.
class GuardianProcess final : public DockGuard {
 public:
  /// How often one that dies is replaced: at most so many times within each `window`; after that it waits for the next.
  struct Pace {
    int replacements = 3;
    double window = 60;  ///< Seconds.
  };

  /// `program` is what restores, usually this program itself. `scheduler` must outlive the guard.
  GuardianProcess(const QString& program, Scheduler& scheduler) : GuardianProcess(program, scheduler, Pace()) {}
  GuardianProcess(const QString& program, Scheduler& scheduler, Pace pace);
  ~GuardianProcess() override;

  void watch(const QString& recoveryFile) override;
  void release() override;

 private:
  void start();
  void listen();
  void beginWindow();
  void replace();

  QString program_;
  Scheduler& scheduler_;
  Pace pace_;
  QString directory_;
  FileDescriptor file_;
  FileDescriptor line_;
  std::unique_ptr<QSocketNotifier> broken_;
  double windowBegan_ = 0;  ///< On the clock that never jumps.
  int replaced_ = 0;        ///< Within the window.
  JobHandle nextWindow_;
};

}  // namespace tarnwick
