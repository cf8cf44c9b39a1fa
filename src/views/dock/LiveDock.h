#pragma once

#include <QUrl>
#include <QUuid>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "apps/ports/LauncherHints.h"
#include "desktop/Toggles.h"
#include "dock/DockContent.h"
#include "store/AppStore.h"
#include "views/dock/DockView.h"
#include "views/tiles/TileSource.h"

namespace tarnwick {

/// What a dock's clicks lead to, and what it asks of others. A function left empty does nothing and answers nothing.
/// Rectangles are places in the dock's window, for panels and menus to stand beside.
struct DockActions {
  std::function<void(const QUuid& widget, const QRect& tile)> openTile;
  std::function<void(const QUuid& widget, const QRect& beside)> tileMenu;
  std::function<void(const QRect& beside)> dockMenu;
  /// What a menu beside that place would offer: a tile's, or a running application's where the widget is null.
  DockView::CommandProvider commands;
  std::function<void()> addWidgets;

  /// A click on a running application: brings it to the front, or minimises the one that is in front.
  std::function<void(quint64 application)> bringApplication;
  std::function<void(quint64 application, const QRect& beside)> applicationMenu;
  /// A middle click. A null widget means the running application.
  std::function<void(const QUuid& widget, quint64 application)> openNewWindow;
  /// 1 for the next window of the application, -1 for the one before.
  std::function<void(quint64 application, int direction)> cycleWindows;
  /// Where running applications are shown, whenever that changed: windows seem to go there when they are minimised.
  std::function<void(const QHash<quint64, QRectF>& places)> placeApplications;

  std::function<void(const DockFileDrop& drop)> dropFiles;
  /// A widget that travels as text; `index` among the displayed widgets.
  std::function<void(const QString& text, qsizetype index)> dropWidget;
  /// Moves a tile, by indices among the displayed widgets as Reordering counts them. Without it the store is told.
  std::function<void(qsizetype from, qsizetype to)> moveTile;
  /// Takes a tile off the dock that was let go far from it, as a step that can be taken back.
  std::function<void(const QUuid& widget)> removeTile;
  /// Takes the newest change of a dock back.
  std::function<void()> undo;
  std::function<void()> redo;
  /// Whether a widget's panel or editor is open, during which a drag switches no profile.
  std::function<bool()> mayNotSwipe;
  /// Moves the floating dock by so much; `dockMoved` follows when the hand lets go.
  std::function<void(const QPoint& delta)> moveDock;
  std::function<void()> dockMoved;
  std::function<void()> closePanel;
  /// The keyboard goes back to where it was.
  std::function<void()> giveBackKeyboard;

  /// What a desktop entry says, for tiles of applications. Absent until it is known.
  std::function<std::optional<ApplicationFacts>(const QString& path)> applicationAt;
  /// The picture that the user chose for the application of a desktop entry; empty for none.
  std::function<QString(const QString& path)> ownIcon;
  /// What an application wants to be seen on its tile.
  std::function<LauncherHint(const QString& desktopId)> hintOf;
  /// Whether the application of a desktop entry was started a moment ago and has no window yet.
  std::function<bool(const QString& path)> isStarting;
  std::function<std::optional<qint64>()> trashItems;
  std::function<bool()> reducesMotion;
  /// How the desktop writes the hour; absent where it leaves that to the language.
  std::function<std::optional<bool>()> uses24Hour;
  /// Whether files can be sent to devices nearby.
  std::function<bool()> sendsNearby;
  /// The user's calendars and reminders at this minute; null while nothing is known of them.
  std::function<std::shared_ptr<const CalendarDigest>()> calendar;
  std::function<void(const Reminder& reminder)> completeReminder;
  std::function<void(const QUrl& url)> openUrl;
  /// Adds what these widgets show of the machine and of the user's files (see Rooms::read).
  std::function<void(ReadingFacts& readings, const QList<DockWidget>& widgets)> addReadings;
  /// Where values come from that neither the store nor the desktop has, such as those of services. Borrowed; they
  /// outlive the dock.
  QList<TileSource*> sources;
};

/// The dock of one display, kept true to the store: its row follows the settings and the running applications, its
/// tiles follow what they show, and the beat as often as their cadence says. While it is hidden its tiles are frozen.
/// Borrows the store and the toggles.
class LiveDock final : public DockContent {
  Q_OBJECT
 public:
  LiveDock(AppStore& store, Toggles& toggles, const QString& display, DockView::IconProvider icons,
           DockActions actions);

  void configure(const DockGeometry& geometry) override;
  double tabsWidth(double scale) const override;
  QMargins margins() const override { return view_->margins(); }
  QRegion outline() const override { return view_->outlineRegion(); }
  QRegion inputRegion() const override { return view_->inputRegion(); }

  DockView& view() { return *view_; }
  /// What everything in it moves by.
  void setFrameClock(std::unique_ptr<FrameClock> clock) { view_->setFrameClock(std::move(clock)); }

  /// Takes everything anew: the settings, the applications, and the answers of the actions. To be called when one of
  /// those answers changed; what the store holds is followed by itself.
  void rebuildRow();
  /// Makes the tiles of one family anew, for readings that nothing else shows.
  void refreshFamily(const QString& family);
  /// What the tiles show at this moment.
  TileSources sources() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void refreshTiles();
  void follow(TileSource& source);
  /// Takes the source's part anew, for the tiles that show it.
  void take(TileSource& source, const std::function<bool(const DockWidget&)>& which);
  void beat();
  /// Whether tiles may be made anew now; while nobody sees them it is noted that they are late.
  bool isSeen();
  void connectStore();
  void connectTiles();
  void activatePart(const QUuid& id, int part);
  void connectApplications();
  void connectHands();
  QList<DockApp> runningApps() const;

  AppStore& store_;
  Toggles& toggles_;
  QString display_;
  DockActions actions_;
  DockGeometry geometry_;
  DockView* view_;
  std::vector<std::unique_ptr<TileSource>> storeSources_;
  TileSources shown_;  ///< What the tiles were made from last.
  qint64 minute_ = 0;  ///< The one that tiles showed last, since 1970.
  bool isFilled_ = false;
  bool isLate_ = false;
};

}  // namespace tarnwick
