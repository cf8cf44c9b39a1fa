#pragma once

#include <QObject>
#include <QSystemTrayIcon>
#include <memory>

#include "app/StatusMenu.h"

namespace tarnwick {

class Tray;

/// The program's mark in the desktop's tray, with its menus. It appears once a tray is there and comes back with it;
/// without one nothing happens. Whether it is seen, and which menu a left click opens, is as the settings have it.
class StatusItem : public QObject {
  Q_OBJECT
 public:
  /// All must outlive it.
  StatusItem(AppStore& store, Commands& commands, Tray& tray);
  ~StatusItem() override;

  bool hasTray() const { return icon_ != nullptr; }
  /// Where it is on the desktop; empty where the tray does not report it.
  QRect place() const { return icon_ ? icon_->geometry() : QRect(); }

 Q_SIGNALS:
  /// The small window below it is to open, or to close where it is open.
  void panelToggled();
  /// That window is to close, because a menu comes.
  void panelDismissed();
  /// The plain menu is to open beside the item, where the tray leaves that to us.
  void menuRequested(QMenu& menu);

 private:
  void follow();
  void appear();
  void activated(QSystemTrayIcon::ActivationReason reason);

  AppStore& store_;
  StatusMenu menu_;
  std::unique_ptr<QSystemTrayIcon> icon_;
  bool visible_ = true;
  bool classic_ = false;  ///< A left click opens the plain menu too.
};

}  // namespace tarnwick
