#pragma once

#include <QHash>
#include <QMargins>
#include <QRegion>
#include <QUuid>
#include <QWidget>
#include <algorithm>
#include <functional>
#include <optional>

#include "base/Scheduler.h"
#include "motion/Animator.h"
#include "motion/Fade.h"
#include "motion/Pulse.h"
#include "store/DockDrops.h"
#include "views/dock/DockRow.h"
#include "views/dock/DropRules.h"
#include "views/dock/EdgeScroll.h"
#include "views/dock/Gestures.h"
#include "views/dock/GlassPicture.h"
#include "views/dock/ItemCommand.h"
#include "views/dock/Magnifier.h"
#include "views/dock/ProfileTabs.h"
#include "views/dock/RowLayout.h"
#include "views/dock/TileDragController.h"
#include "views/dock/TipController.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"
#include "views/tiles/TilePainter.h"
#include "views/tiles/TilePictures.h"
#include "views/tiles/TileSources.h"

namespace tarnwick {

/// The dock as a person sees and handles it: a pane of glass with the tiles on it. It fills a window that is as large
/// as the panel's slot grown by margins(). It changes nothing by itself: what the user does is reported by signals, and
/// what comes of it arrives with the next row. Whoever owns it calls refresh() when something that tiles show may have
/// changed, and only the tiles that look different then are painted again. It composes the parts that know one thing
/// each (Magnifier, TileDragController, ProfileTabs, TipController) and passes on to them what the toolkit tells.
class DockView : public QWidget {
  Q_OBJECT
 public:
  /// Gives an application's icon, `size` units wide, for a screen with `ratio` device pixels per unit. For a tile that
  /// the user put there only `name` and `icon` of the application are set.
  using IconProvider = std::function<QPixmap(const DockApp& app, int size, double ratio)>;
  /// Gives what the menu of a tile offers at the moment, or that of a running application where the widget is null, or
  /// that of the dock itself where there is no application either.
  using CommandProvider =
      std::function<QList<ItemCommand>(const QUuid& widget, quint64 application, const QRect& beside)>;

  explicit DockView(QWidget* parent = nullptr);
  ~DockView() override;

  /// What the delays of hover are counted with; borrowed. Without one the pointer brings neither tabs nor tips, and
  /// nothing opens below a file that is held over it.
  void setScheduler(Scheduler* scheduler);
  /// What everything moves by that does. Without a clock nothing does, and is where it goes to at once.
  void setFrameClock(std::unique_ptr<FrameClock> clock) { animator_.setClock(std::move(clock)); }
  void setIconProvider(IconProvider provider);
  /// For those who cannot see a menu. A view without one offers nothing but to open it.
  void setCommandProvider(CommandProvider provider) { commands_ = std::move(provider); }
  /// Asks the provider for every icon anew.
  void forgetIcons();
  /// Asked when a drag would switch profiles: true while that must not be, as while a widget's panel is open.
  void setSwitchGuard(std::function<bool()> busy);

  void setRow(const DockRow& row);
  const DockRow& row() const { return row_; }
  /// Makes tiles anew: those of widgets that `which` accepts, or all where it is empty.
  void refresh(const TileSources& sources, const std::function<bool(const DockWidget& widget)>& which = {});
  /// Marks the widget whose panel is open; a null identity marks none.
  void setPanelOpen(const QUuid& widget);
  /// While a menu of the dock is open the tabs stay as they are, as while a panel is.
  void setMenuOpen(bool open);
  /// Brings the tabs of the profiles out, or takes them back; hover does the same.
  void showTabs(bool shown);

  // Shapes, in the view's own coordinates.
  QRectF glassRect() const { return layout_.glass; }
  /// What is visible, as whole pixels: the shape of the window where nothing composites.
  QRegion outlineRegion() const;
  /// What takes clicks; the margins let them through.
  QRegion inputRegion() const;
  /// Space around the slot that shadow and lifted tiles are painted on.
  QMargins margins() const;
  /// The width of a slot that the whole row fits in, in the units of the window.
  double idealRowWidth() const { return RowLayout::idealWidth(row_); }
  /// The widget whose tile lies at a point; null for none.
  QUuid widgetAt(QPointF point) const;
  /// The place of a widget's tile; empty for none.
  QRectF tileRect(const QUuid& widget) const;
  /// What a window that belongs to the tile is beside: the stretch of the glass with the tile on it.
  QRect besideRect(const QUuid& widget) const;
  /// The places of the running applications, whether as tiles of their own or behind a launcher's.
  QHash<quint64, QRectF> applicationPlaces() const;
  /// The apps of the row, from its beginning: launchers and running applications.
  QList<DockAppItem> apps() const;
  /// What stands beside the tile of a running application is beside this; empty where no tile stands for it.
  QRect besideApplication(quint64 application) const;

  // The tiles in words, for screen readers.
  qsizetype itemCount() const { return layout_.items.size(); }
  QRectF itemRect(qsizetype item) const { return layout_.items.value(item).rect; }
  TileText itemText(qsizetype item) const;
  /// -1 stands for the dock itself.
  QList<ItemCommand> itemCommands(qsizetype item) const;
  void activateItem(qsizetype item);
  void openItemMenu(qsizetype item);
  void openDockMenu() { openItemMenu(-1); }
  void focusItem(qsizetype item);
  /// Whether something is held over the dock: a press, a tile that is dragged.
  bool isHeld() const { return press_.has_value() || drag_.isActive(); }
  /// What is said of what the pointer or the keyboard is at, beside a stretch of the glass. Whoever owns the view shows
  /// it there.
  const std::optional<DockTip>& tip() const { return tips_.shown(); }
  qsizetype focusedItem() const { return hasFocus() && !drag_.isActive() ? focused_ : -1; }

  /// Whether something travels, fades or pulses, so that frames run.
  bool isMoving() const { return animator_.isRunning(); }

  QSize sizeHint() const override;

 Q_SIGNALS:
  /// tip() did.
  void tipChanged();
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
  /// Tiles are elsewhere now.
  void itemsPlaced();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
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
  struct Tile {
    TileContent content;
    TileText text;
  };

  // What there is.
  const DockWidget* widgetOf(qsizetype item) const;
  const DockApp* appOf(qsizetype item) const;
  /// The running application behind an item; 0 for none.
  quint64 applicationOf(qsizetype item) const;
  const TileContent* contentOf(qsizetype item) const;
  /// The same for as long as the widget or the application is in the row.
  QString keyOf(qsizetype item) const;
  qsizetype itemWithKey(const QString& key) const { return tarnwick::itemWithKey(row_, layout_, key); }
  bool isItem(qsizetype item) const { return item >= 0 && item < layout_.items.size(); }
  bool answersPointer(qsizetype item) const;
  bool isEmpty() const { return row_.widgets.isEmpty() && layout_.items.isEmpty(); }
  /// Whether there is a place that asks for widgets: the whole of an empty dock, or one beside the applications.
  bool invites() const { return row_.widgets.isEmpty(); }
  RowLayout layoutOf(const DockRow& row) const;
  double ratio() const { return devicePixelRatioF(); }
  void relayout();
  void applyRow(const DockRow& row);
  void describe();
  void reportNames();
  void updateItem(qsizetype item);
  void updateRow();
  /// How much larger than its own size a tile is drawn at most.
  double largestScale() const { return std::max(theme::kHoverScale, 1 + row_.swelling); }
  bool isWhole() const {
    return palette_.glass.bodyTop.isValid() || drag_.isActive() || drag_.isLanding() || drop_.has_value();
  }
  void connectParts();
  void reportWhetherWhole();

  // Under the pointer.
  void setPointer(std::optional<QPointF> pointer);
  void rehover();
  void noteMotion();
  void comeToRest();
  bool scrollBy(double units);
  bool cycleWindows(const QWheelEvent& event);
  void holdPressed();
  void startGesture(Press& press, const QMouseEvent& event);
  void endGesture(const Press& press, const QMouseEvent& event);
  bool isOver(const Press& press, QPointF point) const;
  void click(QPointF point);
  void openMenu(qsizetype item, const QRect& beside);
  void openMenuAt(QPoint point);
  std::optional<DockTip> pointedTip() const;
  /// `point` is where the pointer is, for tiles of several parts.
  std::optional<DockTip> tipOf(qsizetype item, std::optional<QPointF> point) const;
  TileClick clickAt(qsizetype item, QPointF point) const;
  void updateTip();
  bool wouldRemove() const;

  // By the keyboard.
  void moveFocus(int direction);
  void scrollTo(qsizetype item);

  // A tile on its way.
  void beginDrag(qsizetype item, const Press& press);
  void dragTo(QPointF pointer);
  void drop();
  void cancelDrag();

  // Things from elsewhere.
  bool hold(QDropEvent* event);
  DockFileDrop fileDrop(const QDropEvent& event) const;
  void clearDrop();
  /// Opens what a file is held over for long enough, so that it can be dropped further in.
  void springLoad();
  void openHeld(qsizetype item);

  // Profiles.
  void hoverTabs(bool inside);
  void holdTabs();
  QRect glassBeside(const QRectF& item) const;

  // What it looks like.
  QRectF visibleRect(qsizetype item) const;
  double slideOf(qsizetype item) const;
  TileStyle styleOf(qsizetype item) const;
  QRectF fullGlass() const;
  bool isLaunching(qsizetype item) const;
  void followLaunches();
  void paintPart(QPainter& painter, const QRect& part);
  void paintItems(QPainter& painter, const QRect& part);
  void paintItemsThatEnd(QPainter& painter, const QRect& part);
  void paintTabs(QPainter& painter);
  void paintPicture(QPainter& painter);
  void paintInvitation(QPainter& painter);
  QRectF invitationGround() const;
  void paintSlide(QPainter& painter);
  void clipSlide(QPainter& painter);
  void paintInsertion(QPainter& painter);
  void paintItem(QPainter& painter, qsizetype item);
  void paintItself(QPainter& painter, qsizetype item, const QRectF& place, const TileStyle& style);
  QPixmap iconOf(const DockApp& app, int size, double pixelRatio);
  QPixmap pictureOfRow();
  QRectF rowBand() const;

  DockRow row_;
  Palette palette_;
  TileSources sources_;
  RowLayout layout_;
  QRectF reportedGlass_;  ///< What shapeChanged reported last.
  bool reportedWhole_ = true;
  QHash<QUuid, Tile> tiles_;
  Glass glass_;
  GlassPicture picture_;
  IconProvider icons_;
  CommandProvider commands_;
  TileIcons tileIcons_;
  QHash<QString, QPixmap> iconCache_;
  std::function<bool()> switchGuard_;

  Animator animator_;
  Magnifier magnifier_;
  TilePictures pictures_;  ///< What tiles are drawn with until rest_ has run off.
  Fade rest_;              ///< From each frame in which something moves.
  Pulse launches_;
  EdgeScroll edges_;
  TileDragController drag_;
  ProfileTabs tabs_;
  TipController tips_;

  double scroll_ = 0;
  std::optional<QPointF> pointer_;
  WheelMeter wheel_;
  qsizetype hovered_ = -1;
  qsizetype pressed_ = -1;
  qsizetype focused_ = -1;
  bool keysLead_ = false;      ///< Whether the keyboard moved last, not the pointer.
  QStringList reportedNames_;  ///< What screen readers know the items by.
  QUuid panelOpen_;
  bool menuOpen_ = false;

  std::optional<Press> press_;
  JobHandle hold_;  ///< Looks whether the button is still down where it was.
  qsizetype middlePressed_ = -1;
  std::optional<DropHover> drop_;
  Scheduler* scheduler_ = nullptr;
  JobHandle opening_;
  qsizetype openingItem_ = -1;  ///< The one that opens soon, or has by now.
};

}  // namespace tarnwick
