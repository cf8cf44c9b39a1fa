#pragma once

#include <QHash>
#include <QMargins>
#include <QPointer>
#include <QRegion>
#include <QSet>
#include <QUuid>
#include <QWidget>
#include <functional>
#include <optional>

#include "base/Scheduler.h"
#include "motion/Animator.h"
#include "store/DockDrops.h"
#include "views/dock/AppIconCache.h"
#include "views/dock/CarriedTile.h"
#include "views/dock/DockPainter.h"
#include "views/dock/DockRow.h"
#include "views/dock/DockShape.h"
#include "views/dock/DropController.h"
#include "views/dock/Gestures.h"
#include "views/dock/Hover.h"
#include "views/dock/ItemCommand.h"
#include "views/dock/ItemPainter.h"
#include "views/dock/KeyboardFocus.h"
#include "views/dock/PointedTips.h"
#include "views/dock/PressController.h"
#include "views/dock/ProfileTabs.h"
#include "views/dock/RowLayout.h"
#include "views/dock/RowScroll.h"
#include "views/dock/RowTiles.h"
#include "views/dock/SpokenNames.h"
#include "views/dock/TileDragController.h"
#include "views/dock/TipController.h"
#include "views/tiles/TileSources.h"

class QMenu;

namespace tarnwick {

/// The dock as a person sees and handles it: a pane of glass with the tiles on it. It fills a window that is as large
/// as the panel's slot grown by margins(). It changes nothing by itself: what the user does is reported by signals, and
/// what comes of it arrives with the next row. Whoever owns it calls refresh() when something that tiles show may have
/// changed, and only the tiles that look different then are painted again. It is put together of parts that know one
/// thing each, passes on to them what the toolkit tells, and joins what they answer.
class DockView : public QWidget {
  Q_OBJECT
 public:
  using IconProvider = AppIconCache::Provider;
  /// Gives what the menu of a tile offers at the moment, or that of a running application where the widget is null, or
  /// that of the dock itself where there is no application either.
  using CommandProvider =
      std::function<QList<ItemCommand>(const QUuid& widget, quint64 application, const QRect& beside)>;

  /// The delays of the pointer are counted with `scheduler`, which is borrowed.
  explicit DockView(Scheduler& scheduler, QWidget* parent = nullptr);
  ~DockView() override;

  /// What everything moves by that does. Without a clock nothing does, and is where it goes to at once.
  void setFrameClock(std::unique_ptr<FrameClock> clock) { animator_.setClock(std::move(clock)); }
  void setIconProvider(IconProvider provider);
  /// For those who cannot see a menu. A view without one offers nothing but to open it.
  void setCommandProvider(CommandProvider provider) { commands_ = std::move(provider); }
  /// Asks the provider for every icon anew.
  void forgetIcons();
  /// Asked when a drag would switch profiles: true while that must not be, as while a widget's panel is open.
  void setSwitchGuard(std::function<bool()> busy) { press_.setSwitchGuard(std::move(busy)); }

  /// Asked where a tile is held beyond the glass: whether another dock is there, which would take it.
  void setOtherDocks(std::function<bool(QPointF point)> isOver) { isOverOtherDock_ = std::move(isOver); }

  void setRow(const DockRow& row);
  const DockRow& row() const { return tiles_.row(); }
  /// Makes tiles anew: those of widgets that `which` accepts, or all where it is empty.
  void refresh(const TileSources& sources, const std::function<bool(const DockWidget& widget)>& which = {});
  /// Marks the widget whose panel is open; a null identity marks none.
  void setPanelOpen(const QUuid& widget);
  /// The menu of the dock that is open; null for none. Meanwhile the tabs stay as they are, as while a panel is.
  void setOpenMenu(QMenu* menu);
  QMenu* openMenu() const;
  /// Brings the tabs of the profiles out, or takes them back; hover does the same.
  void showTabs(bool shown);

  /// Writes their numbers over these apps of the row, counted from 0 along apps(), for as long as it is not told
  /// otherwise.
  void showNumbers(const QSet<int>& apps);

  // Shapes, in the view's own coordinates; see DockShape.
  QRectF glassRect() const { return tiles_.layout().glass; }
  QRegion outlineRegion() const { return shape_.outline(); }
  QRegion inputRegion() const { return shape_.inputRegion(); }
  QMargins margins() const { return shape_.margins(); }
  QSize sizeHint() const override { return shape_.sizeHint(); }
  /// The width of a slot that the whole row fits in, in the units of the window.
  double idealRowWidth() const { return RowLayout::idealWidth(row()); }
  /// The same with a widget that is held over the dock; 0 while none is.
  double widthWithGuest(double scale) const;
  /// What a window that belongs to the tile is beside: the stretch of the glass with the tile on it.
  QRect besideRect(const QUuid& widget) const { return shape_.beside(tileRect(widget)); }
  /// The same for a running application; empty where no tile stands for it.
  QRect besideApplication(quint64 application) const;

  /// The item that is seen at a point; -1 for none.
  qsizetype itemAt(QPointF point) const { return tiles_.layout().itemAt(point).value_or(-1); }
  /// Where a widget that is let go at a point would be put in, among the displayed widgets.
  qsizetype insertionAt(QPointF point) const { return tiles_.layout().widgetsBefore(point.x()); }
  /// Whether any of an item is in sight.
  bool isItemSeen(qsizetype item) const { return !tiles_.seenPlace(item).isEmpty(); }

  // What is in the row; see RowTiles.
  QUuid widgetAt(QPointF point) const { return tiles_.widgetAt(point); }
  QRectF tileRect(const QUuid& widget) const { return tiles_.placeOf(widget); }
  QHash<quint64, QRectF> applicationPlaces() const { return tiles_.applicationPlaces(); }
  QList<DockAppItem> apps() const { return tiles_.apps(); }

  // The tiles in words, for screen readers.
  qsizetype itemCount() const { return tiles_.count(); }
  QRectF itemRect(qsizetype item) const { return tiles_.place(item); }
  TileText itemText(qsizetype item) const { return tiles_.textOf(item); }
  /// -1 stands for the dock itself.
  QList<ItemCommand> itemCommands(qsizetype item) const;
  void activateItem(qsizetype item);
  void openItemMenu(qsizetype item);
  void openDockMenu() { openItemMenu(-1); }
  void focusItem(qsizetype item);
  /// Whether something is held over the dock: a press, a tile that is dragged.
  bool isHeld() const { return press_.isActive() || drag_.isActive(); }
  /// What is said of what the pointer or the keyboard is at, beside a stretch of the glass. Whoever owns the view shows
  /// it there.
  const std::optional<DockTip>& tip() const { return tips_.shown(); }
  /// The tile that is held beyond the glass, where the view cannot paint it. Whoever owns the view shows it there.
  std::optional<CarriedPicture> carried() const;
  qsizetype focusedItem() const { return state_.focusedItem(); }
  /// The item that answers the pointer; -1 for none.
  qsizetype hoveredItem() const { return hover_.item(); }

  /// Whether something travels, fades or pulses, so that frames run.
  bool isMoving() const { return animator_.isRunning(); }

 Q_SIGNALS:
  /// tip() did.
  void tipChanged();
  /// carried() did.
  void carriedChanged();
  void tileActivated(const QUuid& widget);
  /// A click on a part of a tile that acts by itself; for quick toggles `part` is the `Toggle`.
  void tilePartActivated(const QUuid& widget, int part);
  void applicationActivated(quint64 application);
  /// A profile was chosen, by its tab or by a drag.
  void tabActivated(qsizetype tab);
  void addWidgetsRequested();
  /// Ctrl+Z while the dock has the keyboard.
  void undoRequested();
  void redoRequested();
  /// Null for the dock itself. The menu belongs beside `beside`, which is in the view's coordinates.
  void contextMenuRequested(const QUuid& widget, const QRect& beside);
  void applicationMenuRequested(quint64 application, const QRect& beside);
  /// A middle click: on a launcher's tile, whose application may run (`application` is not 0) or not, or on a running
  /// application (`widget` is null).
  void newWindowRequested(const QUuid& widget, quint64 application);
  /// The button is held down on an application: the choice of its windows belongs beside `beside`.
  void windowsRequested(quint64 application, const QRect& beside);
  /// The wheel over an application: 1 for the next of its windows, -1 for the one before.
  void cycleWindowsRequested(quint64 application, int direction);

  /// A tile was moved, by indices among the displayed widgets as Reordering counts them.
  void reorderRequested(qsizetype from, qsizetype to);
  /// A tile was let go over another dock, at a point of this view.
  void leftForOtherDock(const QUuid& widget, QPointF point);
  /// A tile was let go far from the dock.
  void removalRequested(const QUuid& widget);
  /// A tile is dragged, or something of another program is held over the dock: nothing in the row should shift by
  /// itself now. dragMoved follows for as long as it moves.
  void dragStarted();
  void dragMoved();
  /// The display of the drop is left empty.
  void filesDropped(const DockFileDrop& drop);
  /// `index` among the displayed widgets.
  void widgetTextDropped(const QString& text, qsizetype index);

  /// Where the layout lets it float, the dock is dragged: by how much since the last signal, on the screen.
  void moveRequested(const QPoint& delta);
  void moveFinished();
  /// isHeld() is over.
  void released();
  /// The open panel is to close: a key that was meant for it came here.
  void panelDismissed();
  /// The keyboard has nothing to do here any more.
  void focusLeft();
  /// glassRect, outlineRegion, inputRegion or margins changed.
  void shapeChanged();
  /// widthWithGuest() did.
  void widthWanted();
  /// Tiles are elsewhere now.
  void itemsPlaced();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  // The row.
  void applyRow(const DockRow& row);
  void takeRefreshed(const RowTiles::Refreshed& refreshed);
  RowLayout layoutOf(const DockRow& row) const;
  void relayout();
  void takeGuest();
  void letGuestGo();
  void connectParts();
  void connectPress();

  // What is to be painted anew.
  void updateItem(qsizetype item);
  void updateRow();
  void showMagnified(qsizetype item);

  // Under the pointer.
  void setPointer(std::optional<QPointF> pointer);
  void rehover();
  void hoverTabs();
  void click(QPointF point);
  bool cycleWindows(const QWheelEvent& event);
  void openMenu(qsizetype item, const QRect& beside);
  void openMenuAt(QPoint point);
  void leaveKeyboard();

  // A tile on its way.
  void beginDrag(qsizetype item, QPointF at);
  void dragTo(QPointF pointer);
  void drop();
  void cancelDrag();
  void sendHome();
  bool wouldCross() const;
  bool wouldRemove() const;
  void tellCarried();

  // What is said of what is pointed at.
  std::optional<DockTip> pointedTip() const;
  void updateTip();

  CommandProvider commands_;
  std::function<bool(QPointF)> isOverOtherDock_;
  QUuid panelOpen_;
  bool menuOpen_ = false;  ///< Until it is told that none is, even where the menu went before.
  QPointer<QMenu> menu_;
  QSet<int> numbers_;
  bool wasCarried_ = false;
  std::optional<RowGuest> guest_;    ///< That the row makes space for.
  std::optional<DockWidget> wider_;  ///< What the dock is to be wide enough for, a moment longer than it is a guest.
  double guestScroll_ = 0;           ///< How far the row was scrolled for it.

  // What there is and how it moves. Those below read what is above them.
  RowTiles tiles_;
  Animator animator_;
  AppIconCache icons_;
  ProfileTabs tabs_;
  RowScroll scroll_;

  // What is done with it.
  TileDragController drag_;
  DropController drop_;
  PressController press_;
  Hover hover_;
  KeyboardFocus focus_;
  WheelMeter wheel_;
  DockState state_;

  // How it is seen and what is said of it.
  DockShape shape_;
  ItemPainter items_;
  DockPainter painter_;
  PointedTips pointed_;
  TipController tips_;
  SpokenNames names_;
};

}  // namespace tarnwick
