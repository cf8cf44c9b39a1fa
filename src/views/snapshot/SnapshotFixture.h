#pragma once

#include <QDateTime>
#include <memory>

#include "base/Scheduler.h"
#include "config/DockConfiguration.h"
#include "desktop/Toggles.h"
#include "store/AppStore.h"
#include "store/NoDesktop.h"
#include "views/dock/DockRow.h"
#include "views/panels/FixedReadings.h"
#include "views/panels/PanelContext.h"
#include "views/tiles/TileSources.h"

namespace tarnwick {

/// The one set of data that all pictures of the program are taken with, put together from what each room has for them.
struct SnapshotFixture {
  static QDateTime moment();
  /// British English, unless it was set.
  static QLocale& locale();
  static TileSources sources();
  /// A widget of a kind, set up, with an identity made from the kind.
  static DockWidget widgetOf(const QString& kind);
  /// Settings that hold a widget of every kind, and nothing else.
  static DockConfiguration configuration();
  /// A dock as people have it.
  static DockRow dock();
  /// The dock of the first day, with applications running.
  static DockRow starterDock();
};

/// A store with the fixture's settings at the fixture's moment, for as many panels as are wanted. Reads and writes
/// nothing, and no work of it ever runs.
class SnapshotStore {
 public:
  SnapshotStore();
  ~SnapshotStore();

  AppStore& store() { return *store_; }
  /// What its panels read.
  FixedReadings& readings() { return *readings_; }
  /// Can do everything, and does nothing but change a widget in the store.
  Commands& commands() { return *commands_; }
  PanelContext contextOf(const QString& kind) { return contextOf(kind, *commands_); }
  /// The same for a panel that asks others for what it wants done.
  PanelContext contextOf(const QString& kind, Commands& commands);

 private:
  std::unique_ptr<Scheduler> scheduler_;
  std::unique_ptr<NoDesktop> desktop_;
  std::unique_ptr<Toggles> toggles_;
  std::unique_ptr<AppStore> store_;
  std::unique_ptr<Commands> commands_;
  std::unique_ptr<FixedReadings> readings_;
};

}  // namespace tarnwick
