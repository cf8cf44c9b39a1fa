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

  /// Activates the windows of the application with the desktop entry at `path`, the one that was active last at the
  /// end, so that it lies on top: those of the virtual desktop that is shown, or all where it has none there. Returns
  /// whether such an application runs.
  bool bring(const QString& path);
  /// The same by the identity of a running application, of which only the windows in a scope are meant, or all where
  /// it has none there.
  bool bring(quint64 identity, const WindowScope& scope = {});
  /// Which windows of the application are meant, the most recently active first.
  static QList<quint64> windowsToActivate(const RunningApp& app, const ClientWindows& windows);

 private:
  bool bring(const std::optional<RunningApp>& app);

  RunningApplications& running_;
  ClientWindows& windows_;
};

}  // namespace tarnwick
