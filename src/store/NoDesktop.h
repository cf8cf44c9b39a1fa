#pragma once

#include "store/StoreSetup.h"

namespace tarnwick {

/// A machine that reports no details of itself.
class NoCounters final : public SystemCounters {
 public:
  std::optional<ProcessorTicks> processorTicks() override { return std::nullopt; }
  std::optional<MemoryReading> memory() override { return std::nullopt; }
  std::optional<NetworkReading> network() override { return std::nullopt; }
  std::optional<DiskReading> disk() override { return std::nullopt; }
  std::optional<double> batteryCharge() override { return std::nullopt; }
};

/// The windows of others are those that it was given; nothing can be done with them.
class GivenWindows final : public ClientWindows {
 public:
  QList<ClientWindow> all() const override { return list; }
  void activate(quint64) override {}
  void close(quint64) override {}
  void minimise(quint64) override {}
  void setIconGeometry(const QList<quint64>&, const QRectF&) override {}
  QList<ClientWindow> list;
};

/// Whatever is posted is not seen.
class NoNotifications final : public Notifications {
 public:
  Capability capability() const override;
  void post(const QString&, const QString&, std::function<void()> unseen) override {
    if (unseen) unseen();
  }
};

/// A desktop that has nothing of what a store uses and on which nothing happens: for pictures, and for tests of what
/// needs none. Reads nothing. Must outlive the store.
class NoDesktop {
 public:
  /// `scheduler` must outlive it.
  explicit NoDesktop(Scheduler& scheduler);

  /// A store on this desktop. Its plain values may be set afterwards.
  StoreSetup storeSetup();
  /// The same in a run without a user's data, which reads nothing of the desktop either.
  StoreSetup diagnosticSetup();

  InstalledApps installedApps;
  GivenWindows windows;
  RunningApplications applications;
  NoNotifications notifications;
  SessionEvents session;
  NoFacilities facilities;

 private:
  Scheduler& scheduler_;
};

}  // namespace tarnwick
