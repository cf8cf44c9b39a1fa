#pragma once

#include <QList>
#include <QObject>

#include "apps/InstalledApps.h"
#include "config/DockWidget.h"
#include "store/UndoStack.h"

namespace tarnwick {

class AppStore;

/// Changes of a dock's tiles that the user may take back. Main thread only; all that it is made of must outlive it.
class UndoableEdits : public QObject {
  Q_OBJECT
 public:
  UndoableEdits(AppStore& store, InstalledApps& apps, UndoStack& undo);

  /// Inserts at an index of what a display's dock shows, at its end for any other index: all of them, or none and the
  /// message that the dock is full. Gives whether it did.
  bool insert(const QList<DockWidget>& widgets, const QString& display, qsizetype index = -1);
  /// The same at the end of a profile. Gives false without a message when there is no such profile.
  bool append(const QList<DockWidget>& widgets, const QUuid& profile);
  /// Removes a widget. It comes back with its settings at its place; its credentials are kept as long as it can.
  void remove(const QUuid& widget);

  /// Whether a tile of a display's dock stands for what lies at a path. An entry that was overridden in another folder
  /// is the same application.
  bool isHeld(const QString& path, const QString& display) const;
  /// What a person calls a tile: its title, else its application, file or folder, else its kind.
  QString nameOf(const DockWidget& widget) const;

 private:
  bool place(const QList<DockWidget>& widgets, qsizetype profile, const QUuid& before);
  void removeAll(const QList<QUuid>& widgets);

  AppStore& store_;
  InstalledApps& apps_;
  UndoStack& undo_;
};

}  // namespace tarnwick
