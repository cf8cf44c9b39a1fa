#pragma once

#include <QMenu>
#include <QMenuBar>
#include <functional>
#include <memory>
#include <vector>

#include "config/DockLayout.h"

namespace tarnwick {

/// What the entries of the program's menus do. An entry whose action is empty is shown disabled.
struct MenuActions {
  std::function<void()> continueSetup;
  std::function<void()> settings;
  std::function<void()> toggleDock;
  std::function<void()> restoreSystemDock;
  std::function<void()> addWidgets;
  std::function<void()> folderIcons;
  std::function<void()> checkForUpdates;
  std::function<void()> about;
  std::function<void()> help;
  std::function<void()> quit;
  std::function<void()> commandBar;
  std::function<void()> openSpace;
  std::function<void()> saveSpace;
  std::function<void()> dismissError;
  std::function<void(DockLayout)> chooseLayout;
  /// The small window below the status item. While there is none, a click opens the plain menu.
  std::function<void()> togglePanel;
  std::function<void()> hidePanel;
  /// Opens the plain menu at the status item, where the tray leaves that to us.
  std::function<void(QMenu& menu)> openMenu;
};

/// Asked whenever an entry is brought up to date or chosen, so that parts of the program may bring their actions at any
/// time.
using MenuActionsProvider = std::function<MenuActions()>;

/// What the plain menu shows at the moment it opens.
struct MenuState {
  bool onboardingComplete = false;
  DockLayout layout = DockLayout::Fixed;
  QString error;  ///< The message line; an entry of its own while there is one, which dismisses it.
};

/// The status item's plain menu. Trays keep a copy of it, so it is built once and then only kept up to date.
class StatusMenu : public QMenu {
  Q_OBJECT
 public:
  StatusMenu(std::function<MenuState()> state, MenuActionsProvider actions);

  /// Brings the entries up to date; done by itself before the menu opens.
  void refresh();

 private:
  std::function<MenuState()> state_;
  MenuActionsProvider actions_;
  std::vector<std::function<void()>> refreshers_;
  QAction* message_;
  QAction* belowMessage_;
  QAction* continueSetup_;
};

/// The menu bar of the program's own windows.
std::unique_ptr<QMenuBar> makeApplicationMenu(const MenuActionsProvider& actions);

}  // namespace tarnwick
