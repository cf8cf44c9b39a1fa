#pragma once

#include <sys/types.h>
#include <xcb/xcb.h>

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRect>
#include <QString>
#include <QTemporaryDir>
#include <memory>
#include <optional>

#include "support/VirtualDisplay.h"

namespace tarnwick::testing {

/// The real executable, started with a data folder of the test's own on the virtual display and the test's bus.
class Program {
 public:
  /// Where it is: beside the tests.
  static QString path() { return QCoreApplication::applicationDirPath() + QStringLiteral("/tarnwick"); }
  explicit Program(const QString& dataHome, const QStringList& arguments = {}, const QString& executable = {});
  /// The environment that programs get instead of this one's, but for the variables that are changed.
  static void startFrom(const QProcessEnvironment& environment);
  /// Changes one variable of the environment of programs that are started from now on.
  static void setVariable(const QString& name, const QString& value);
  static void resetVariables();

  bool isRunning() const { return process_.state() == QProcess::Running; }
  pid_t pid() const { return static_cast<pid_t>(process_.processId()); }
  /// The docks and bubbles of the process, oldest first; the program's other windows are left out.
  QList<xcb_window_t> windows() const;
  /// Waits until it shows that many of them; false when it never does.
  bool shows(qsizetype count) const;
  void signal(int number) const;
  /// Waits until it ends by itself and gives its status; nothing when it crashed or stays.
  std::optional<int> end();
  QString standardError();

 private:
  mutable QProcess process_;
};

/// Runs the executable to its end.
struct Ended {
  std::optional<int> status;
  QString standardError;
  QString standardOutput;
};
Ended runToEnd(const QString& dataHome, const QStringList& arguments, const QString& executable = {});

/// A session bus that lives as long as the test program; the address is in the environment.
class SessionBus {
 public:
  SessionBus();
  QString address() const { return address_; }

 private:
  QString address_;
  std::unique_ptr<ChildProcess> daemon_;
};

}  // namespace tarnwick::testing
