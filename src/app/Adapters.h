#pragma once

#include <memory>

#include "app/AppDelegate.h"
#include "app/Readings.h"
#include "app/SocketSession.h"
#include "app/WindowSystem.h"
#include "apps/AppIcons.h"
#include "apps/AppLaunch.h"
#include "apps/AppOpener.h"
#include "apps/InstalledApps.h"
#include "apps/LaunchEnvironment.h"
#include "apps/RunningApplications.h"
#include "apps/ports/LauncherHints.h"
#include "desktop/ClientWindows.h"
#include "desktop/Files.h"
#include "desktop/ScreenColors.h"
#include "desktop/Toggles.h"

namespace tarnwick {

/// One adapter for each port of this desktop, made once after the application object and before the delegate, which
/// they outlive. Making them is cheap: what is costly begins when it is first used.
class Adapters {
 public:
  /// Throws DomainError where no window system that we know is there.
  Adapters(Scheduler& scheduler, const LaunchEnvironment& environment);
  ~Adapters();

  /// Fill in what the program is made of.
  StoreSetup storeSetup();
  /// `dataDirectory` is where what the dock must give back is written down.
  DelegateSetup delegateSetup(const QString& dataDirectory);

  Screens& screens() { return *windowSystem_.screens; }
  Panels& panels() { return *windowSystem_.panels; }
  InstalledApps& installedApps() { return *installedApps_; }
  RunningApplications& runningApplications() { return *runningApplications_; }
  /// Made at the first call.
  AppIcons& icons();
  SessionApplication& session() { return *session_; }
  Toggles& toggles() { return *toggles_; }
  const LaunchEnvironment& launchEnvironment() const { return environment_; }

 private:
  Scheduler& scheduler_;
  LaunchEnvironment environment_;
  WindowSystem windowSystem_;
  std::unique_ptr<MotionPreference> motion_;
  std::unique_ptr<DockPreferenceAccess> preferences_;
  std::unique_ptr<DockGuard> guard_;
  std::unique_ptr<InstalledApps> installedApps_;
  std::unique_ptr<RunningApplications> runningApplications_;
  std::unique_ptr<AppIcons> icons_;
  std::unique_ptr<ApplicationActivation> activation_;
  std::unique_ptr<AppLaunch> launch_;
  std::unique_ptr<TrustedEntries> trusted_;
  std::unique_ptr<AppOpener> opener_;
  std::unique_ptr<Files> files_;
  std::unique_ptr<LauncherHints> hints_;
  std::unique_ptr<Readings> readings_;
  std::unique_ptr<Notifications> notifications_;
  std::unique_ptr<SessionEvents> sessionEvents_;
  std::unique_ptr<SessionApplication> session_;
  std::unique_ptr<SocketSession> door_;
  std::unique_ptr<Toggles> toggles_;
  std::unique_ptr<ScreenColors> colors_;
};

}  // namespace tarnwick
