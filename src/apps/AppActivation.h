#pragma once

#include <QString>

#include "apps/RunningApplications.h"
#include "desktop/ClientWindows.h"

namespace tarnwick {

/// Brings a running application to the front.
class AppActivation {
 public:
  /// Both must outlive it.
  AppActivation(RunningApplications& running, ClientWindows& windows) : running_(running), windows_(windows) {}

  /// Activates the window of the application with the desktop entry at `path` that was active last, and no other: one
  /// of the virtual desktop that is shown, or of any where it has none there. Returns whether such an application runs.
  bool bring(const QString& path);
  /// The same by the identity of a running application, of which only the windows in a scope are meant, or all where
  /// it has none there.
  bool bring(quint64 identity, const WindowScope& scope = {});

 private:
  bool bring(const std::optional<RunningApp>& app);

  RunningApplications& running_;
  ClientWindows& windows_;
};

}  // namespace tarnwick
