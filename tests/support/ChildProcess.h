#pragma once

#include <sys/types.h>

#include <QStringList>
#include <memory>
#include <optional>

namespace tarnwick::testing {

/// A program that a test started. It ends with the test, whatever becomes of the test.
class ChildProcess {
 public:
  /// Starts a program found on the path. Never null; a program that cannot be started has ended.
  /// `inherited` is a file descriptor that it keeps open, if any.
  static std::unique_ptr<ChildProcess> start(const QStringList& command, int inherited = -1);
  ~ChildProcess();

  pid_t pid() const { return pid_; }
  bool isRunning();
  void signal(int number);
  /// Asks it to end and waits until it has.
  void stop();
  /// Its exit code once it has ended by itself; nothing while it runs or if it crashed.
  std::optional<int> exitCode();

 private:
  explicit ChildProcess(pid_t pid) : pid_(pid) {}

  pid_t pid_;
  std::optional<int> status_;
};

}  // namespace tarnwick::testing
