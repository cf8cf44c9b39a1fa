#pragma once

#include <QList>
#include <QMenu>
#include <QString>
#include <functional>
#include <optional>

#include "apps/DesktopEntry.h"
#include "config/DockLayout.h"

namespace tarnwick {

class Commands;

/// One line of a menu. Without a text it is a separator; with entries of its own it opens a menu of them; without
/// either it is shown disabled.
struct DockMenuEntry {
  QString text;
  std::function<void()> run;
  std::optional<bool> checked;  ///< For an entry that can be checked.
  QList<DockMenuEntry> entries = {};
};

/// What a menu knows of an application.
struct AppMenuState {
  struct Window {
    quint64 id = 0;
    QString title;
    bool active = false;
  };

  QList<DesktopAction> actions;
  QList<Window> windows;
  bool canBeKept = false;  ///< No tile of the dock holds it, and it has a desktop entry.
};

/// What a menu knows of a widget's tile.
struct TileMenuState {
  QString name;
  bool opens = true;     ///< False for what is only there to look at.
  bool hasIcon = false;  ///< Its icon can be chosen.
  bool hasOwnIcon = false;
  bool canMoveLeft = false;
  bool canMoveRight = false;
  bool isFolder = false;
  bool isTrash = false;
  bool trashIsEmpty = true;
  std::optional<QStringList> calendarFolders;  ///< Those that the user added, for what shows calendars.
  std::optional<AppMenuState> app;
};

/// What a dock's own menu knows.
struct DockMenuState {
  DockLayout layout = DockLayout::Fixed;
  QStringList profiles;
  qsizetype profile = 0;  ///< The one that the display shows, by its place.
};

/// What entries do. One whose action is empty is shown disabled.
struct DockMenuActions {
  Commands& commands;  ///< Outlives the entries.
  std::function<void()> open{};
  std::function<void()> edit{};
  std::function<void()> chooseIcon{};
  std::function<void()> resetIcon{};
  std::function<void()> moveLeft{};
  std::function<void()> moveRight{};
  std::function<void()> remove{};
  std::function<void()> reveal{};
  std::function<void()> emptyTrash{};
  std::function<void(const QString& path)> removeCalendarFolder{};
  std::function<void(const QString& action)> startAction{};
  std::function<void()> keep{};
  std::function<void()> quit{};
};

/// The context menus of a dock as lists. Pure.
struct DockMenuModel {
  static QList<DockMenuEntry> tile(const TileMenuState& state, const DockMenuActions& actions, const QString& display);
  /// The choice of an application's windows.
  static QList<DockMenuEntry> windows(const AppMenuState& state, Commands& commands);
  /// Of a running application that is no widget.
  static QList<DockMenuEntry> application(const QString& name, const AppMenuState& state,
                                          const DockMenuActions& actions, const QString& display);
  /// Of a display's dock itself. Entries must not be run once the commands are gone.
  static QList<DockMenuEntry> dock(const DockMenuState& state, Commands& commands, const QString& display);

  /// The same without menus in menus: what stood in one is called by both names.
  static QList<DockMenuEntry> flat(const QList<DockMenuEntry>& entries);
  /// Fills a menu anew.
  static void fill(QMenu& menu, const QList<DockMenuEntry>& entries);
};

}  // namespace tarnwick
