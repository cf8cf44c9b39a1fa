#include "app/Adapters.h"

#include <QCoreApplication>
#include <QDBusConnection>

#include "app/Autostart.h"
#include "apps/AppActivation.h"
#include "base/DomainError.h"
#include "platform/dbus/DBusSessionApplication.h"
#include "platform/dbus/DesktopNotifications.h"
#include "platform/dbus/DesktopToggles.h"
#include "platform/dbus/LoginSessionEvents.h"
#include "platform/linux/LinuxSystemCounters.h"
#include "platform/linux/ProcessCommandLine.h"
#include "platform/x11/X11ClientWindows.h"
#include "platform/x11/X11Events.h"
#include "platform/x11/X11HotKeys.h"
#include "platform/x11/X11Panels.h"
#include "platform/x11/X11Screens.h"

namespace tarnwick {

Adapters::Adapters(Scheduler& scheduler, const LaunchEnvironment& environment)
    : scheduler_(scheduler), environment_(environment) {
  if (!X11Events::isAvailable()) {
    throw DomainError::invalid(
        QCoreApplication::translate("Adapters", "Tarnwick needs an X11 display on this desktop, and there is none."));
  }
  events_ = std::make_unique<X11Events>();
  auto screens = std::make_unique<X11Screens>(*events_);
  panels_ = std::make_unique<X11Panels>(*events_, *screens);
  hotKeys_ = std::make_unique<X11HotKeys>(*events_);
  windows_ = std::make_unique<X11ClientWindows>(*events_, *screens);
  screens_ = std::move(screens);

  installedApps_ = std::make_unique<InstalledApps>(AppEnvironment::ofProcess(), scheduler_);
  const RunningApplications::Self self{QStringLiteral("com.brindlemoor.Tarnwick"), QCoreApplication::applicationPid()};
  runningApplications_ = std::make_unique<RunningApplications>(*windows_, *installedApps_, self, &processCommandLine);
  notifications_ = std::make_unique<DesktopNotifications>(QDBusConnection::sessionBus());
  sessionEvents_ = std::make_unique<LoginSessionEvents>(QDBusConnection::systemBus());
  session_ = std::make_unique<DBusSessionApplication>();
  toggles_ = std::make_unique<DesktopToggles>(QDBusConnection::sessionBus(), QDBusConnection::systemBus());
}

Adapters::~Adapters() = default;

AppIcons& Adapters::icons() {
  if (!icons_) icons_ = std::make_unique<AppIcons>(AppEnvironment::ofProcess());
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
  return setup;
}

DelegateSetup Adapters::delegateSetup() {
  DelegateSetup setup;
  setup.screens = screens_.get();
  setup.panels = panels_.get();
  setup.hotKeys = hotKeys_.get();
  setup.session = session_.get();
  setup.events = sessionEvents_.get();
  setup.executable = QCoreApplication::applicationFilePath();
  setup.autostartFile = Autostart::path();
  setup.toggles = toggles_.get();
  setup.applications = runningApplications_.get();
  setup.icons = [this](const DockApp& app, int size, double ratio) { return icons().pixmap(app.icon, size, ratio); };
  setup.bringApplication = [this](quint64 application) {
    AppActivation(*runningApplications_, *windows_).bring(application);
  };
  return setup;
}

}  // namespace tarnwick
