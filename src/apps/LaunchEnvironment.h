#pragma once

#include <QProcessEnvironment>
#include <QStringList>

namespace tarnwick {

/// The environment that started programs get: the one that we were started with, without what was meant for us alone.
/// Make it first thing in main(), before any variable is set for our own toolkit; then nothing of ours can leak. What
/// was set earlier for this program alone is taken out with `remove`.
struct LaunchEnvironment {
  QProcessEnvironment variables;

  void remove(const QStringList& names);

  /// What this process has now, less the variables that a session gives to one process only: start-up ids, activation
  /// tokens, sockets of the service manager.
  static LaunchEnvironment ofProcess();
  static LaunchEnvironment from(QProcessEnvironment variables);
};

}  // namespace tarnwick
