#pragma once

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include "support/Wait.h"

namespace tarnwick {

/// A message bus of the test's own, in a home of its own; nothing of the machine's is reachable on it. The environment
/// of this process points there too, for as long as the object lives.
class PrivateBus {
 public:
  PrivateBus();
  ~PrivateBus();

  /// A fresh connection; it stands for the session's and the system's bus alike.
  QDBusConnection connection();
  /// Lets the bus start the service behind `name` by running `program`. Before the first connection.
  void makeStartable(const QString& name, const QString& program);
  void stop();
  /// A new one in its place, for whoever connects from now on.
  void restart();

 private:
  void start();

  QTemporaryDir home_;
  QProcess daemon_;
  QString address_;
  QStringList connections_;
};

}  // namespace tarnwick
