#pragma once

#include <QString>
#include <memory>

#include "base/FileDescriptor.h"
#include "base/Scheduler.h"
#include "dock/ports/DockGuard.h"

class QSocketNotifier;

namespace tarnwick {

/// The guard as a tiny process in a session of its own, one for the system's dock and for windows that were moved. It
/// holds one end of a connection; when the other end goes without a word, it runs the restoring mode of the program on
/// the very file that it was given. One that dies is replaced, and standard error says so. A guardian that cannot be
/// started makes no difference until then.
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
  /// From now on windows that were moved, as the journal in `directory` has them, are to be put back.
  void watchWindows(const QString& directory);
  void releaseWindows();

 private:
  void begin();
  void farewell();
  void start();
  void listen();
  void beginWindow();
  void replace();

  QString program_;
  Scheduler& scheduler_;
  Pace pace_;
  QString directory_;
  FileDescriptor file_;   ///< Of the system's dock; none while that is as the user has it.
  bool windows_ = false;  ///< Some are not where the user left them.
  FileDescriptor line_;
  std::unique_ptr<QSocketNotifier> broken_;
  double windowBegan_ = 0;  ///< On the clock that never jumps.
  int replaced_ = 0;        ///< Within the window.
  JobHandle nextWindow_;
};

}  // namespace tarnwick
