#pragma once

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>
#include <functional>
#include <memory>

#include "app/StatusMenu.h"

class QDBusServiceWatcher;

namespace tarnwick {

/// The program's mark in the desktop's tray, with its menus. It appears once a tray is there and comes back with it;
/// without one nothing happens.
class StatusItem : public QObject {
  Q_OBJECT
 public:
  /// `state` is asked each time before a menu opens.
  StatusItem(std::function<MenuState()> state, MenuActions actions, QObject* parent = nullptr);
  ~StatusItem() override;

  void setVisible(bool visible);
  /// With the classic menu a left click opens the plain menu too.
  void setClassicMenu(bool classic) { classic_ = classic; }
  /// What a left click toggles below the item; while empty it opens the plain menu.
  std::function<void()> togglePanel;
  std::function<void()> hidePanel;

 private:
  void lookForTray();
  void appear();
  void activated(QSystemTrayIcon::ActivationReason reason);

  std::function<MenuState()> state_;
  MenuActions actions_;
  QMenu menu_;
  std::unique_ptr<QSystemTrayIcon> icon_;
  bool visible_ = true;
  bool classic_ = false;
};

}  // namespace tarnwick
