#pragma once

#include <QString>
#include <functional>
#include <optional>

namespace tarnwick {

class DockPreferenceAccess;

/// Gives the system's dock back by hand, without a dock of ours.
struct RestoreDock {
  /// Who asks decides what happens when nothing can be put back: a user who asks for repair gets a working dock, with
  /// the system's defaults; the guardian, whom nobody asked, leaves things alone.
  enum class Asker { User, Guardian };

  /// Puts back what was saved in `directory` and tells `say` each line.
  static void run(const QString& directory, DockPreferenceAccess& preferences,
                  const std::function<void(const QString&)>& say, Asker asker = Asker::User);
};

/// The mode of the command line: prints its lines to standard output and returns the process's status, always 0. Needs
/// no display. Without a directory it is the usual one.
int restoreDockAndExit(int argc, char** argv, const std::optional<QString>& directory);

}  // namespace tarnwick
