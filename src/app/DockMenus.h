#pragma once

#include <QObject>
#include <QUuid>

#include "app/DockCommands.h"
#include "app/DockMenuModel.h"
#include "app/FolderQuestion.h"
#include "app/OwnIcons.h"
#include "store/UndoableEdits.h"

namespace tarnwick {

/// Makes the context menus of a dock from what the store and the desktop know at the moment. Main thread only. Entries
/// must not be run once this is gone.
class DockMenus : public QObject {
  Q_OBJECT
 public:
  /// All must outlive it.
  DockMenus(AppStore& store, const Services& services, Commands& commands, UndoableEdits& edits,
            DockCommands& dockCommands);

  /// The menu of a widget's tile on a display; empty for a widget that is not shown there.
  QList<DockMenuEntry> tile(const QUuid& widget, const QString& display);
  /// The menu of a running application's tile; empty for one that is gone.
  QList<DockMenuEntry> application(quint64 application, const QString& display);
  /// The choice of a running application's windows.
  QList<DockMenuEntry> windows(quint64 application, const QString& display);
  /// The menu of a display's dock itself.
  QList<DockMenuEntry> dock(const QString& display);
  /// What the entries about an application's icon change.
  OwnIcons& icons() { return icons_; }

 Q_SIGNALS:
  /// The user chose in the menu of a tile to empty the trash, and has to confirm it.
  void emptyTrashRequested(const QString& display, const QUuid& widget);

 private:
  AppMenuState appState(const std::optional<RunningApp>& app, const QString& entryPath, const QString& display) const;
  void addAppActions(DockMenuActions& actions, quint64 application, const QString& entryPath);
  void chooseIcon(const QString& entryPath);

  AppStore& store_;
  const Services& services_;
  Commands& commands_;
  UndoableEdits& edits_;
  DockCommands& dockCommands_;
  OwnIcons icons_;
  FolderQuestion pictures_;
};

}  // namespace tarnwick
