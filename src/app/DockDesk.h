#pragma once

#include <QMenu>
#include <QObject>
#include <QPointer>
#include <memory>

#include "app/DockBubble.h"
#include "app/DockCommands.h"
#include "app/DockMenus.h"
#include "app/EntryQuestion.h"
#include "app/FolderQuestion.h"
#include "app/TipHost.h"
#include "apps/AppOpener.h"
#include "apps/ports/LauncherHints.h"
#include "desktop/Files.h"
#include "desktop/ScreenColors.h"
#include "dock/DockController.h"
#include "store/DockDrops.h"
#include "store/UndoStack.h"
#include "store/UndoableEdits.h"
#include "views/dock/LiveDock.h"
#include "views/panels/PanelContext.h"

namespace tarnwick {

class PanelHost;
class Readings;

/// What the desk is made of. Borrowed; all but the colors are required.
struct DockDeskParts {
  AppStore* store = nullptr;
  Screens* screens = nullptr;
  Panels* panels = nullptr;
  FrameClocks* clocks = nullptr;
  MotionPreference* motion = nullptr;
  RunningApplications* running = nullptr;
  ClientWindows* windows = nullptr;
  InstalledApps* apps = nullptr;
  AppOpener* opener = nullptr;
  Files* files = nullptr;
  LauncherHints* hints = nullptr;
  Readings* readings = nullptr;
  Toggles* toggles = nullptr;
  ScreenColors* colors = nullptr;
  DockView::IconProvider icons;
  /// Sends files to devices nearby; empty where nothing can.
  std::function<bool(const QList<QUrl>& files)> sendNearby;
};

/// What the hands on the docks lead to: clicks, menus, drops, and the way back from them. It makes the content of each
/// dock and answers what that asks. Main thread only.
class DockDesk : public QObject {
  Q_OBJECT
 public:
  explicit DockDesk(DockDeskParts parts);
  ~DockDesk() override;

  /// Set once the controller is there, which asks for contents from then on.
  void setController(DockController* controller);
  /// Set once there is whoever shows the panels behind tiles. Must outlive shutdown().
  void setPanelHost(PanelHost* host) { host_ = host; }
  std::unique_ptr<DockContent> makeContent(const QString& display);
  /// What the tiles of a display's dock show at this moment.
  TileSources sources(const QString& display) const;
  /// What panels can ask of the program at this moment.
  PanelActions panelActions();
  /// Marks the tile whose panel is open; a null identity marks none.
  void markOpen(const QString& display, const QUuid& widget);
  /// Whether popups of a display's dock open below it, as they do in the upper half of what is usable of the display.
  bool opensDownwards(const QString& display) const;
  /// What stands open beside a widget's tile stands beside this, in the coordinates of the dock's content; empty where
  /// the tile is not there.
  QRect besideRect(const QString& display, const QUuid& widget) const;
  /// Whether a menu or a panel of a display's dock is open.
  bool isBusy(const QString& display) const;

  DockCommands& commands() { return commands_; }
  DockMenus& menus() { return menus_; }
  UndoableEdits& edits() { return edits_; }
  /// Takes the newest change of a dock back.
  void undo() { undo_.undo(); }
  /// Makes again what was taken back last.
  void redo() { undo_.redo(); }
  /// What tiles of these widgets show at this moment, whether or not a dock holds them.
  TileSources previews(const QList<DockWidget>& widgets);
  /// Starts listening to what applications want shown on their tiles.
  void start();
  /// The message that stands above a dock came, went or changed its height.
  void makeRoomForTheMessage();
  /// Nothing can be taken back from now on. To be called before the store goes down.
  void shutdown();

  /// Opens the panel of a tile beside it; set by whoever shows panels. The rectangle is one of the dock's content.
  std::function<void(const QString& display, const QUuid& widget, const QRect& tile)> openPanel;
  std::function<bool(const QString& display)> panelIsOpen;
  /// Asked before a menu opens: one thing at a time stands beside a dock.
  std::function<void()> closePanel;
  /// Closes it as its tile does, for whoever asked by a key.
  std::function<void()> dismissPanel;
  /// Whether something is open that a switch of profiles by a drag would pull away.
  std::function<bool()> mayNotSwipe;
  std::function<void()> addWidgets;
  /// Of the message that stands above the dock now; 0 for none.
  std::function<int()> messageHeight;

 private:
  DockActions actions(const QString& display);
  void addQuestions(DockActions& actions);
  QList<ItemCommand> commandsOf(const QString& display, const QList<DockMenuEntry>& entries, const QRect& beside);
  void openMenu(const QString& display, const QList<DockMenuEntry>& entries, const QRect& beside);
  void closeMenu();
  /// An entry from outside the folders of applications is asked about before it runs.
  void guardStrangeEntries();
  void markMenu(bool open);
  void rebuildRows();
  void placeApplications(const QString& display);
  void actOn(const QString& display);
  void offerUndo(quint64 entry, const QString& sentence, const QString& display);
  void closeBubble(quint64 entry);
  std::optional<ApplicationFacts> factsAt(const QString& path);

  DockDeskParts parts_;
  DockController* controller_ = nullptr;
  PanelHost* host_ = nullptr;
  UndoStack undo_;
  UndoableEdits edits_;
  DockDrops drops_;
  DockCommands commands_;
  DockMenus menus_;
  FolderQuestion folders_;
  FolderQuestion pictures_;
  EntryQuestion entryQuestion_;
  TipHost tips_;
  std::map<QString, LiveDock*> docks_;
  QPointer<QMenu> menu_;  // The one that is open.
  QString menuDisplay_;
  QRect openTile_;  // The tile that was clicked or asked for its menu last, for its panel to stand beside.
  QString openDisplay_;
  std::unique_ptr<DockBubble> bubble_;
  quint64 bubbleEntry_ = 0;
};

}  // namespace tarnwick
