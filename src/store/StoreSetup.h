#pragma once

#include <QList>
#include <QString>
#include <memory>
#include <optional>

#include "apps/InstalledApps.h"
#include "apps/RunningApplications.h"
#include "base/BuildSettings.h"
#include "base/Scheduler.h"
#include "desktop/Notifications.h"
#include "desktop/SessionEvents.h"
#include "facilities/StoreCalls.h"
#include "system/ports/SystemCounters.h"

namespace tarnwick {

/// What a store is made of. References are borrowed and must outlive the store; what a desktop or this build lacks is
/// one of those in NoFacilities or NoDesktop. To replace one, give it where the setup is made: an assignment would
/// write into the object that is referred to.
struct StoreSetup {
  Scheduler& scheduler;
  std::unique_ptr<SystemCounters> counters;  ///< Never null.

  // Of the desktop.
  InstalledApps& installedApps;
  RunningApplications& applications;
  Notifications& notifications;
  SessionEvents& session;

  // What operations of the store ask for.
  RemoteRefresh& remote;
  CredentialKeeping& credentials;
  ClipboardMigration& clipboard;
  WindowReservations& reservations;

  /// Those of one step run in the order of this list, and the store's own metrics and the remote values after them.
  QList<BeatClient*> clients = {};
  /// Runs without a user's data: nothing is read, nothing is saved, no timer starts.
  bool diagnostic = false;
  /// The settings file; chosen by the build settings when absent.
  std::optional<QString> storage = std::nullopt;
  /// Whether the start reads the desktop: running applications and a first sample of the system.
  bool platformReads = true;
  BuildSettings build = {};
};

/// Nothing is fetched.
class NoRemote final : public RemoteRefresh {
 public:
  void refresh(const DockWidget&) override {}
  void refreshAll() override {}
};

/// No widget has a secret.
class NoCredentials final : public CredentialKeeping {
 public:
  void remove(const QList<QUuid>&, Failed) override {}
  void removeOrphans(const QList<QUuid>&) override {}
};

/// Takes nothing over, so that the texts stay.
class NoClipboard final : public ClipboardMigration {
 public:
  bool migrate(const QStringList&) override { return false; }
};

/// No window was ever moved.
class NoReservations final : public WindowReservations {
 public:
  void reserve(const QList<ReservingDock>&) override {}
  void restore() override {}
};

/// Stands for each facility that a build has not.
struct NoFacilities {
  NoRemote remote;
  NoCredentials credentials;
  NoClipboard clipboard;
  NoReservations reservations;
};

}  // namespace tarnwick
