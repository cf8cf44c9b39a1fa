#pragma once

#include <QMenu>
#include <QMenuBar>
#include <functional>
#include <memory>
#include <vector>

namespace tarnwick {

class AppStore;
class Commands;

/// The status item's plain menu. Trays keep a copy of it, so it is built once and then only kept up to date.
class StatusMenu : public QMenu {
  Q_OBJECT
 public:
  /// Both must outlive it.
  StatusMenu(AppStore& store, Commands& commands);

  /// Brings the entries up to date; done by itself before the menu opens.
  void refresh();

 private:
  AppStore& store_;
  std::vector<std::function<void()>> refreshers_;
  QAction* message_;
  QAction* belowMessage_;
  QAction* continueSetup_;
};

/// The menu bar of the program's own windows. `commands` must outlive it.
std::unique_ptr<QMenuBar> makeApplicationMenu(Commands& commands);

}  // namespace tarnwick
