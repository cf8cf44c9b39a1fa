#pragma once

#include <QObject>
#include <QUuid>
#include <functional>

#include "app/DockCommands.h"
#include "app/DockMenuModel.h"
#include "app/OwnIcons.h"
#include "store/UndoableEdits.h"

namespace tarnwick {

/// Makes the context menus of a dock from what the store and the desktop know at the moment. Main thread only. Entries
/// must not be run once this is gone.
class DockMenus : public QObject {
  Q_OBJECT
 public:
  /// Borrowed; all are required.
  struct Parts {
    AppStore* store = nullptr;
    RunningApplications* running = nullptr;
    ClientWindows* windows = nullptr;
    InstalledApps* apps = nullptr;
    Files* files = nullptr;
    DockCommands* commands = nullptr;
    UndoableEdits* edits = nullptr;
  };

  explicit DockMenus(const Parts& parts) : parts_(parts), icons_(*parts.store, *parts.edits, *parts.apps) {}

  /// The menu of a widget's tile on a display; empty for a widget that is not shown there.
  QList<DockMenuEntry> tile(const QUuid& widget, const QString& display);
  /// The menu of a running application's tile; empty for one that is gone.
  QList<DockMenuEntry> application(quint64 application, const QString& display);
  /// The menu of the dock itself.
  QList<DockMenuEntry> dock();
  /// What the entries about an application's icon change.
  OwnIcons& icons() { return icons_; }

  // What opens a window; empty until the window exists.
  std::function<void(const QUuid& widget)> editWidget;
  std::function<void(const QString& entryPath)> chooseIcon;
  std::function<void()> addCalendarFolder;
  /// Asked by each menu of the dock for what adds widgets and what shows the settings.
  std::function<DockMenuActions()> dockActions;

 private:
  AppMenuState appState(const std::optional<RunningApp>& app, const QString& entryPath) const;
  void addAppActions(DockMenuActions& actions, quint64 application, const QString& entryPath);

  Parts parts_;
  OwnIcons icons_;
};

}  // namespace tarnwick
