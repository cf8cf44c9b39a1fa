#pragma once

#include <QList>
#include <QObject>
#include <functional>
#include <memory>

#include "apps/InstalledApps.h"
#include "config/DockWidget.h"
#include "files/LatestWork.h"
#include "store/AppStore.h"
#include "store/DocumentChange.h"
#include "store/SettingsChange.h"
#include "store/UndoStack.h"
#include "store/WidgetPlaces.h"

namespace tarnwick {

/// Changes of a dock and its tiles that the user may take back. Main thread only; all that it is made of must outlive
/// it. Identities are taken by value, as by the store.
class UndoableEdits : public QObject {
  Q_OBJECT
 public:
  UndoableEdits(AppStore& store, InstalledApps& apps, UndoStack& undo);

  /// Inserts at an index of what a display's dock shows, at its end for any other index: all of them, or none and the
  /// message that the dock is full. Gives whether it did.
  bool insert(const QList<DockWidget>& widgets, const QString& display, qsizetype index = -1);
  // These add one at the end of a profile as the store does, for callers that report it themselves: no sentence goes to
  // the stack.
  QUuid add(const QString& kind, QUuid profile);
  QUuid addWidget(const DockWidget& widget, QUuid profile);
  /// Removes a widget. It comes back with its settings at its place; its credentials are kept as long as it can.
  /// `display` is the one of the dock where that was asked for; empty for none.
  void remove(QUuid widget, const QString& display = {});
  /// Moves a widget by `places` within its profile; stops at the ends. Taking it back brings the old order back,
  /// without what came or went meanwhile.
  void move(QUuid widget, int places);
  /// The same by indices of what a display's dock shows, counted as Reordering does.
  void moveShown(const QString& display, qsizetype from, qsizetype to);
  /// Moves a widget in front of what a display's dock shows at an index, to its end for any other index, from whichever
  /// profile holds it. Where that is full it stays, and the store says so.
  void moveTo(QUuid widget, const QString& display, qsizetype index);
  /// Replaces the stored widget of the same identity. Taking it back gives what this changed its old value: the title
  /// and options, and none that the tile counts by itself. Changes of the same options that follow each other closely
  /// are one step; one that is announced to the user is a step of its own.
  void update(const DockWidget& widget, const UndoStack::Notice& notice = {});
  /// Changes settings other than tiles. Taking it back gives what this changed its old value, where nothing else
  /// changed it since. Changes of the same fields that follow each other closely are one step.
  void change(const std::function<void(DockConfiguration&)>& change);
  // The same, of what the store does to profiles.
  void newProfile(const QString& name, bool duplicate);
  void deleteProfile(QUuid profile);
  void pinDisplay(const QString& display, const std::optional<QUuid>& profile);
  /// While a control is held, all that it does to the same fields is one step, however long it takes; what was
  /// done before and comes after is another.
  void setHeld(bool held);
  /// Replaces the settings by a file's, which is read on another thread; on a failure they stay, and the store says
  /// why. It can be taken back as long as nothing that it brought is changed; what is entered elsewhere meanwhile
  /// stays. `done` runs when it is over, and never when another import takes its place or this is gone.
  void importConfiguration(const QString& path, std::function<void(bool taken)> done = {});
  /// The same of settings that were kept aside, without the widgets that cannot be used. The file stays.
  void importKept(const QString& path, std::function<void(bool taken)> done = {});

  /// Whether a tile of a display's dock stands for what lies at a path. An entry that was overridden in another folder
  /// is the same application.
  bool isHeld(const QString& path, const QString& display) const;
  /// What a person calls a tile: its title, else its application, file or folder, else its kind.
  QString nameOf(const DockWidget& widget) const;

  /// Where what can be taken back is kept.
  const UndoStack& stack() const { return undo_; }
  /// See UndoStack::takeNotice.
  void takeNotice() { undo_.takeNotice(); }
  /// Takes back the entry of the stack under that identity, whatever came after it.
  void takeBack(quint64 entry) { undo_.undo(entry); }

 private:
  /// Changes of the same fields, one after the other.
  struct Run {
    quint64 entry = 0;
    double last = 0;  // When it was last gone on with, on the reference clock.
    std::shared_ptr<SettingsChange> change;
    std::shared_ptr<QList<QUuid>> lost;  ///< Widgets that went with it.
  };

  /// Changes of the same options of a widget, one after the other.
  struct WidgetRun {
    quint64 entry = 0;
    double last = 0;
    QStringList options;
    DockWidget before;
    std::shared_ptr<DockWidget> after;
  };
  /// A tile that is not on the dock, and where it stood.
  struct Removed {
    DockWidget widget;
    WidgetPlace place;
  };
  using RemovedTiles = std::shared_ptr<QList<Removed>>;

  void pushAdded(const QList<QUuid>& added, const UndoStack::Notice& notice);
  void takeAway(const QList<QUuid>& widgets, const RemovedTiles& removed);
  void putBack(const RemovedTiles& removed);
  bool goesOn(const WidgetRun& run, const QUuid& widget, const QStringList& options) const;
  /// A step of the stack that replaced the document.
  struct Import {
    DocumentChange change;
    QList<QUuid> lost;  ///< Widgets that went with it.
    quint64 entry = 0;
  };
  void importFrom(AppStore::Origin origin, const std::function<DockConfiguration()>& decode,
                  std::function<void(bool taken)> done);
  bool takeImport(const DockConfiguration& imported, AppStore::Origin origin);
  void watchImport(const std::shared_ptr<Import>& import);
  void takeBackImport(const DocumentChange& change);
  void forgetChangedImports();
  void rearrange(qsizetype profile, const std::function<void()>& move);
  void place(const QUuid& widget, const WidgetPlace& place);
  void bringBackOrder(const QUuid& profile, const QList<QUuid>& order);
  void bringBackValues(const DockWidget& before, const DockWidget& after);
  bool goesOn(const SettingsChange& change) const;
  void takeBack(const SettingsChange& change);
  void record(const std::function<DockConfiguration()>& act);

  AppStore& store_;
  InstalledApps& apps_;
  UndoStack& undo_;
  Run run_;
  WidgetRun widgetRun_;
  LatestWork reading_;  ///< Of a file that is imported.
  /// Those that can be taken back, the latest last.
  QList<std::shared_ptr<Import>> imports_;
  bool isImporting_ = false;  ///< What changes now is an import, or the undoing of one.
  bool isHeld_ = false;
};

}  // namespace tarnwick
