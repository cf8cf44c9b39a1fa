#pragma once

#include <QMenu>
#include <QObject>
#include <QPointer>
#include <utility>

#include "app/DockMenus.h"
#include "app/LiveDocks.h"
#include "dock/DockController.h"
#include "store/Services.h"

namespace tarnwick {

class PanelHost;

/// Opens the menus of docks, one at a time, beside what they are about. Opening one counts as acting on its dock.
/// Rectangles are in the coordinates of the dock's content. Main thread only.
class DockMenuHost final : public QObject {
  Q_OBJECT
 public:
  /// All must outlive it.
  DockMenuHost(AppStore& store, const Services& services, DockMenus& menus, DockController& dock,
               const LiveDocks& docks, PanelHost& panels);
  ~DockMenuHost() override;

  void openTile(const QString& display, const QUuid& widget, const QRect& beside);
  void openApplication(const QString& display, quint64 application, const QRect& beside);
  void openWindows(const QString& display, quint64 application, const QRect& beside);
  void openDock(const QString& display, const QRect& beside);
  /// A click on an application asks which of its windows is meant. One that closed that very menu ends there.
  void chooseWindow(const QString& display, quint64 application);

  /// What the menu of a tile holds, of an application where the widget is null, or of the dock itself where both are.
  QList<ItemCommand> commands(const QString& display, const QUuid& widget, quint64 application);

  bool isOpenOn(const QString& display) const { return menu_ && display == display_; }
  void close();
  void closeOn(const QString& display);
  /// Without notifying the listeners of the menu.
  void drop();

 private:
  void open(const QString& display, const QList<DockMenuEntry>& entries, const QRect& beside);
  void hides(QMenu* menu);
  void mark(bool open);

  AppStore& store_;
  const Services& services_;
  DockMenus& menus_;
  DockController& dock_;
  const LiveDocks& docks_;
  PanelHost& panels_;
  QPointer<QMenu> menu_;  // The one that is open.
  QString display_;
  quint64 choice_ = 0;                         ///< The application whose windows it lists.
  std::pair<quint64, double> closedChoice_{};  ///< The one that was listed last, and when that menu closed.
};

}  // namespace tarnwick
