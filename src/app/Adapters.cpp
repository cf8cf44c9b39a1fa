#include "app/Adapters.h"

#include <QCoreApplication>
#include <QDBusConnection>

#include "app/Autostart.h"
#include "base/DomainError.h"
#include "platform/dbus/BusActivation.h"
#include "platform/dbus/DBusSessionApplication.h"
#include "platform/dbus/DesktopMotionPreference.h"
#include "platform/dbus/DesktopNotifications.h"
#include "platform/dbus/DesktopToggles.h"
#include "platform/dbus/LauncherEntries.h"
#include "platform/dbus/LoginSessionEvents.h"
#include "platform/dbus/PortalScreenColors.h"
#include "platform/docks/GuardianProcess.h"
#include "platform/docks/SystemDockPreferences.h"
#include "platform/linux/FileOperations.h"
#include "platform/linux/LinuxSystemCounters.h"
#include "platform/linux/ProcessCommandLine.h"

namespace tarnwick {

Adapters::Adapters(Scheduler& scheduler, const LaunchEnvironment& environment)
    : scheduler_(scheduler), environment_(environment), windowSystem_(WindowSystem::make()) {
  installedApps_ = std::make_unique<InstalledApps>(AppEnvironment::ofProcess(), scheduler_);
  const RunningApplications::Self self{QStringLiteral("com.brindlemoor.Tarnwick"), QCoreApplication::applicationPid()};
  runningApplications_ =
      std::make_unique<RunningApplications>(*windowSystem_.windows, *installedApps_, self, &processCommandLine);
  activation_ = std::make_unique<BusActivation>();
  launch_ = std::make_unique<AppLaunch>(AppEnvironment::ofProcess(), environment_, *activation_);
  launch_->tokenFor = windowSystem_.activationToken;
  opener_ = std::make_unique<AppOpener>(*installedApps_, *launch_, scheduler_);
  files_ = std::make_unique<FileOperations>();
  hints_ = std::make_unique<LauncherEntries>(QDBusConnection::sessionBus());
  readings_ = std::make_unique<Readings>(scheduler_);
  notifications_ = std::make_unique<DesktopNotifications>(QDBusConnection::sessionBus());
  sessionEvents_ = std::make_unique<LoginSessionEvents>(QDBusConnection::systemBus());
  motion_ = std::make_unique<DesktopMotionPreference>(QDBusConnection::sessionBus());
  session_ = std::make_unique<DBusSessionApplication>();
  toggles_ = std::make_unique<DesktopToggles>(QDBusConnection::sessionBus(), QDBusConnection::systemBus());
  colors_ = std::make_unique<PortalScreenColors>(QDBusConnection::sessionBus());
}

Adapters::~Adapters() = default;

AppIcons& Adapters::icons() {
  if (!icons_) {
    icons_ = std::make_unique<AppIcons>(AppEnvironment::ofProcess());
    QObject::connect(installedApps_.get(), &InstalledApps::changed, installedApps_.get(), [this] { icons_->clear(); });
  }
  return *icons_;
}

StoreSetup Adapters::storeSetup() {
  StoreSetup setup;
  setup.scheduler = &scheduler_;
  setup.counters = std::make_unique<LinuxSystemCounters>();
  setup.installedApps = installedApps_.get();
  setup.applications = runningApplications_.get();
  setup.notifications = notifications_.get();
  setup.session = sessionEvents_.get();
  setup.clients = readings_->beatClients();
  return setup;
}

DelegateSetup Adapters::delegateSetup(const QString& dataDirectory) {
  DelegateSetup setup;
  preferences_ = std::make_unique<SystemDockPreferences>(dataDirectory);
  trusted_ = std::make_unique<TrustedEntries>(dataDirectory + QStringLiteral("/trusted-entries.json"));
  opener_->setTrusted(trusted_.get());
  guard_ = std::make_unique<GuardianProcess>(QCoreApplication::applicationFilePath());
  setup.ports = {windowSystem_.screens.get(),
                 windowSystem_.panels.get(),
                 windowSystem_.zones.get(),
                 windowSystem_.clocks.get(),
                 motion_.get(),
                 windowSystem_.windows.get(),
                 preferences_.get(),
                 guard_.get()};
  setup.hotKeys = windowSystem_.hotKeys.get();
  setup.framesWindows = windowSystem_.framesWindows;
  setup.session = session_.get();
  door_ = std::make_unique<SocketSession>(dataDirectory);
  setup.door = door_.get();
  setup.events = sessionEvents_.get();
  setup.executable = QCoreApplication::applicationFilePath();
  setup.environment = environment_;
  setup.autostartFile = Autostart::path();
  setup.notifications = notifications_.get();
  setup.toggles = toggles_.get();
  setup.colors = colors_.get();
  setup.applications = runningApplications_.get();
  setup.icons = [this](const DockApp& app, int size, double ratio) { return icons().pixmap(app.icon, size, ratio); };
  setup.installedApps = installedApps_.get();
  setup.opener = opener_.get();
  setup.files = files_.get();
  setup.hints = hints_.get();
  setup.readings = readings_.get();
  return setup;
}

}  // namespace tarnwick
