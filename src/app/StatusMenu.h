#pragma once

#include <QMenu>
#include <QMenuBar>
#include <functional>
#include <memory>

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
  std::function<void()> quit;
  std::function<void()> commandBar;
  std::function<void()> openSpace;
  std::function<void()> saveSpace;
  std::function<void()> dismissError;
  std::function<void(DockLayout)> chooseLayout;
};

/// What the menus show at the moment they open.
struct MenuState {
  bool onboardingComplete = false;
  DockLayout layout = DockLayout::Fixed;
  QString error;  ///< The message line; an entry of its own while there is one.
};

/// Fills the status item's plain menu anew, which is done each time before it opens.
void fillStatusMenu(QMenu& menu, const MenuState& state, const MenuActions& actions);

/// The menu bar of the program's own windows.
std::unique_ptr<QMenuBar> makeApplicationMenu(const MenuActions& actions);

}  // namespace tarnwick
