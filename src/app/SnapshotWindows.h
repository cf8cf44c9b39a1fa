#pragma once

#include <QTemporaryDir>
#include <memory>

#include "app/SnapshotConnections.h"
#include "apps/InstalledApps.h"
#include "commandbar/SettingsPlaces.h"
#include "store/UndoStack.h"
#include "store/UndoableEdits.h"
#include "views/snapshot/Snapshot.h"
#include "views/snapshot/SnapshotFixture.h"
#include "views/window/WindowServices.h"

namespace tarnwick {

/// The program's own windows as `--snapshot` pictures them: each section of Settings, the library, a form, the pages of
/// the first run, About, Help and the panel of the status item, over a store of fixed data. Must outlive its windows.
class SnapshotWindows final {
 public:
  SnapshotWindows();
  ~SnapshotWindows();

  QList<SnapshotWindow> list();
  /// The places of these settings, all of them known.
  SettingsPlaces& places();

 private:
  class FreeKeys;
  class OneScreen;

  std::unique_ptr<QWidget> settings(const QString& section);
  std::unique_ptr<QWidget> library();
  std::unique_ptr<QWidget> editor();
  void connectWidgets();
  std::unique_ptr<QWidget> connectionForm();
  std::unique_ptr<QWidget> formOf(const DockWidget& widget);
  std::unique_ptr<QWidget> firstRun(int page);

  QTemporaryDir folder_;
  SystemScheduler scheduler_;
  SnapshotStore snapshot_;
  InstalledApps apps_;
  UndoStack undo_;
  UndoableEdits edits_;
  std::unique_ptr<OneScreen> screens_;
  std::unique_ptr<FreeKeys> keys_;
  WidgetEditor::Hooks forms_;
  SnapshotConnections connections_;
  const WindowServices services_;
  std::unique_ptr<SettingsPlaces> places_;
};

}  // namespace tarnwick
