#pragma once

#include <QList>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QString>
#include <QUuid>

#include "store/DockDrops.h"
#include "views/dock/ItemCommand.h"

namespace tarnwick {

/// What a display's dock asks of whoever presents it: where clicks, menus, drops and drags on it lead. `display` is the
/// dock's own; rectangles are places in its content, for panels and menus to be placed beside. Main thread only.
class DockHost {
 public:
  virtual ~DockHost() = default;

  /// A click on a tile.
  virtual void activateTile(const QString& display, const QUuid& widget) = 0;
  /// The user did something on the dock that needs no host: what is asked for next without naming a dock is meant for
  /// this one.
  virtual void actOn(const QString& display) = 0;
  /// A middle click. A null widget means the running application.
  virtual void openNewWindow(const QString& display, const QUuid& widget, quint64 application) = 0;
  /// 1 for the next window of the application, -1 for the one before.
  virtual void cycleWindows(const QString& display, quint64 application, int direction) = 0;

  virtual void openTileMenu(const QString& display, const QUuid& widget, const QRect& beside) = 0;
  virtual void openApplicationMenu(const QString& display, quint64 application, const QRect& beside) = 0;
  /// The choice of an application's windows.
  virtual void openWindowMenu(const QString& display, quint64 application, const QRect& beside) = 0;
  virtual void openDockMenu(const QString& display, const QRect& beside) = 0;
  /// What a menu beside that place would offer: a tile's, a running application's where the widget is null, or the
  /// dock's own where there is no application either.
  virtual QList<ItemCommand> commandsOf(const QString& display, const QUuid& widget, quint64 application,
                                        const QRect& beside) = 0;

  virtual void dropFiles(const DockFileDrop& drop) = 0;
  /// A widget that travels as text; `index` among the displayed widgets.
  virtual void dropWidget(const QString& display, const QString& text, qsizetype index) = 0;
  /// Moves a tile, by indices among the displayed widgets as Reordering counts them.
  virtual void moveTile(const QString& display, qsizetype from, qsizetype to) = 0;
  /// Whether another display's dock is at a place of this one's content.
  virtual bool isOverOtherDock(const QString& display, QPointF at) const = 0;
  /// Moves a tile to the other dock that is at that place, as a step that can be taken back.
  virtual void moveTileAcross(const QString& display, const QUuid& widget, QPointF at) = 0;
  /// Takes a tile off the dock that was let go far from it, as a step that can be taken back.
  virtual void removeTile(const QString& display, const QUuid& widget) = 0;
  /// Running applications are shown elsewhere now: windows seem to go there when they are minimised.
  virtual void applicationsPlaced(const QString& display) = 0;

  /// Whether a widget's panel or editor is open, during which a drag switches no profile.
  virtual bool holdsProfile() const = 0;
  /// Moves the floating dock by so much; `finishMove` follows when the button is let go.
  virtual void moveDock(const QString& display, const QPoint& delta) = 0;
  virtual void finishMove(const QString& display) = 0;
  /// Closes the open panel as its tile does, for whoever asked by a key.
  virtual void dismissPanel() = 0;
  /// The keyboard goes back to where it was.
  virtual void leaveKeyboard() = 0;
};

}  // namespace tarnwick
