#include "store/NoDesktop.h"

#include <QCoreApplication>

namespace tarnwick {

namespace {

struct NoDesktopWords {
  Q_DECLARE_TR_FUNCTIONS(NoDesktop)
};

}  // namespace

Capability NoNotifications::capability() const {
  return Capability::no(NoDesktopWords::tr("This desktop shows no notifications."));
}

NoDesktop::NoDesktop(Scheduler& scheduler)
    : installedApps(AppEnvironment(), scheduler),
      applications(windows, installedApps, RunningApplications::Self()),
      scheduler_(scheduler) {
  installedApps.setFixed(std::make_shared<AppIndex>());
}

StoreSetup NoDesktop::storeSetup() {
  return {.scheduler = scheduler_,
          .counters = std::make_unique<NoCounters>(),
          .installedApps = installedApps,
          .applications = applications,
          .notifications = notifications,
          .session = session,
          .remote = facilities.remote,
          .credentials = facilities.credentials,
          .clipboard = facilities.clipboard,
          .reservations = facilities.reservations};
}

StoreSetup NoDesktop::diagnosticSetup() {
  StoreSetup setup = storeSetup();
  setup.diagnostic = true;
  setup.platformReads = false;
  return setup;
}

}  // namespace tarnwick
