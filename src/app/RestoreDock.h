#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <optional>

namespace tarnwick {

class DockPreferenceAccess;

/// Gives the system's dock back on the user's request, without a dock of ours. docs/handover.md says how it keeps out
/// of the way of a copy that runs and of other repairs.
struct RestoreDock {
  struct Terms {
    /// The recovery file that the guardian handed over, open; -1 when a user asks. Who asks decides what happens when
    /// nothing can be put back: a user gets a working dock, with the system's defaults; the guardian, which
    /// acts by itself, changes nothing but its own file.
    int guardedFile = -1;
    /// How long a user's request waits for other repairs under way; the guardian's repair waits without end.
    std::chrono::milliseconds patience{10'000};
    /// For how long a copy that runs may take to answer.
    std::chrono::milliseconds answer{2000};
  };

  /// Puts back what was saved in `directory` and passes each line to `say`. False where the guardian's file stays
  /// because a dock that it names cannot be reached now: then it is to be tried again.
  static bool run(const QString& directory, DockPreferenceAccess& preferences,
                  const std::function<void(const QString&)>& say) {
    return run(directory, preferences, say, Terms());
  }
  static bool run(const QString& directory, DockPreferenceAccess& preferences,
                  const std::function<void(const QString&)>& say, const Terms& terms);

  // What the running copy is asked through its InstanceSocket, and what it answers.
  static constexpr const char* kRequest = "restore-dock";
  static constexpr const char* kHeld = "held";        ///< Whether it held originals.
  static constexpr const char* kFailure = "failure";  ///< Why they could not be given back; absent when they are back.
};

/// The mode of the command line: prints its lines to standard output and returns the process's status, always 0. Needs
/// no display. Without a directory it is the usual one. For the guardian it goes on, for an hour at most, until all
/// docks can be reached.
int restoreDockAndExit(int argc, char** argv, const std::optional<QString>& directory);

}  // namespace tarnwick
