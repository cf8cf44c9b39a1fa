#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "app/AttentionCalls.h"
#include "app/CarryHost.h"
#include "app/DesktopTileServices.h"
#include "app/DockBubble.h"
#include "app/DockCommands.h"
#include "app/DockMenuHost.h"
#include "app/DockMenus.h"
#include "app/DockQuestions.h"
#include "app/LiveDocks.h"
#include "app/MessageLine.h"
#include "app/PanelHost.h"
#include "app/SeenWidgets.h"
#include "app/TipHost.h"
#include "dock/DockController.h"
#include "store/DockDrops.h"
#include "store/UndoStack.h"
#include "store/UndoableEdits.h"
#include "views/dock/LiveDock.h"

namespace tarnwick {

class Readings;

/// What presents the docks, beside the services of the desktop.
struct DockPresenterSetup {
  DockPreferenceAccess& preferences;  ///< Of the system's own dock.
  DockGuard& guard;
  Readings& readings;
  /// Whether a form is open in which a widget is set up.
  std::function<bool()> editorIsOpen{};
};

/// The docks on the screen and what is beside them: their content, menus, panels, messages, and the undoing of
/// what was changed on them. Main thread only.
class DockPresenter final : public QObject, private DockHost {
  Q_OBJECT
 public:
  /// All must outlive it.
  DockPresenter(AppStore& store, const Services& services, Commands& commands, DockPresenterSetup setup);
  ~DockPresenter() override;

  DockController& dock() { return dock_; }
  const DockController& dock() const { return dock_; }
  UndoableEdits& edits() { return edits_; }
  UndoStack& undoStack() { return undo_; }
  DockQuestions& questions() { return questions_; }

  /// What a display's dock shows.
  std::unique_ptr<DockContent> makeContent(const QString& display);

  /// Lets the docks come up, and with them the message line.
  void show();
  /// Starts listening to what applications want shown on their tiles.
  void start();
  /// Takes what docks, panels and bubbles look like from the settings and DesktopLook anew.
  void takeLook();
  /// Takes down what is beside the docks, after which nothing can be taken back. To be called before the store goes
  /// down; shutdown() after it.
  void closeAll();
  /// Closes the panel, menu or tip that is open, for something else that takes the keyboard.
  void giveWay();
  /// Closes what is open beside the docks, which would lie above a window that comes now.
  void makeRoom();
  void shutdown();

  /// Opens the panel of a widget beside its tile, or closes it when it is open. Nothing happens where the display has
  /// no dock.
  void openPanel(const QString& display, const QUuid& widget, const QString& as = {});
  /// A click on a running application: brings it to the front, or minimises the one that is in front.
  void activateApplication(const QString& display, quint64 application) {
    actOn(display);
    tiles_.activateApplication(display, application);
  }
  /// Another window of the application of a desktop entry.
  void newWindow(const QString& entryPath) { tiles_.newWindowOfEntry(entryPath); }
  /// A click on one of the apps of the dock that was acted on last, counted from 0 in the order of its row; nothing
  /// where it has fewer.
  void openApp(int place);
  /// How many apps that dock has.
  qsizetype apps() const;
  /// Writes their numbers over these apps of that dock, counted from 0, and over none of the others.
  void showNumbers(const QSet<int>& apps);
  bool panelIsOpen(const QString& display) const { return panels_.hasActivePanel(display); }
  /// Closes the open panel without motion.
  void closePanel() { panels_.closeAtOnce(); }

  void moveToTrash(const QStringList& paths, const QString& display) { drops_.moveToTrash(paths, display); }
  /// Begins to keep what tiles show, of a display's dock or, without one, of widgets that no dock need hold.
  std::unique_ptr<KeptSources> keepSources(const QString& display = {}) const;

 private:
  // DockHost
  void activateTile(const QString& display, const QUuid& widget) override;
  void actOn(const QString& display) override;
  void openNewWindow(const QString& display, const QUuid& widget, quint64 application) override;
  void cycleWindows(const QString& display, quint64 application, int direction) override {
    tiles_.cycleWindows(display, application, direction);
  }
  void openTileMenu(const QString& display, const QUuid& widget, const QRect& beside) override {
    actOn(display);
    menuHost_.openTile(display, widget, beside);
  }
  void openApplicationMenu(const QString& display, quint64 application, const QRect& beside) override {
    actOn(display);
    menuHost_.openApplication(display, application, beside);
  }
  void openWindowMenu(const QString& display, quint64 application, const QRect& beside) override {
    actOn(display);
    menuHost_.openWindows(display, application, beside);
  }
  void openDockMenu(const QString& display, const QRect& beside) override {
    actOn(display);
    menuHost_.openDock(display, beside);
  }
  QList<ItemCommand> commandsOf(const QString& display, const QUuid& widget, quint64 application,
                                const QRect&) override;
  void dropFiles(const DockFileDrop& drop) override;
  void dropWidget(const QString& display, const QString& text, qsizetype index) override;
  void moveTile(const QString& display, qsizetype from, qsizetype to) override;
  bool isOverOtherDock(const QString& display, QPointF at) const override { return !dockAcross(display, at).isEmpty(); }
  void moveTileAcross(const QString& display, const QUuid& widget, QPointF at) override;
  void removeTile(const QString& display, const QUuid& widget) override;
  void applicationsPlaced(const QString& display) override;
  bool holdsProfile() const override;
  void moveDock(const QString& display, const QPoint& delta) override { dock_.moveBy(display, delta); }
  void finishMove(const QString& display) override { dock_.finishMove(display); }
  void dismissPanel() override { panels_.close(); }
  void leaveKeyboard() override { dock_.leaveKeyboard(); }

  /// An entry from outside the folders of applications is asked about before it runs.
  void guardStrangeEntries();
  void connectContents();
  void connectDocks();
  /// What tiles and panels read of the machine and of the desktop.
  ReadingServices readingServices() const;
  bool opensDownwards(const QString& display) const;
  /// The display of another dock that is seen at a point of this one's content; empty for none.
  QString dockAcross(const QString& display, QPointF at) const;
  /// A point of one dock's content in that of another.
  QPointF mapAcross(const QString& from, const QString& to, QPointF at) const;
  bool isBusy(const QString& display) const;
  void markOpen(const QString& display, const QUuid& widget);
  void showUndo(quint64 entry, const QString& sentence, const QString& display);
  void closeBubble(quint64 entry);

  AppStore& store_;
  const Services& services_;
  Commands& commands_;
  DockPresenterSetup setup_;
  UndoStack undo_;
  UndoableEdits edits_;
  DockDrops drops_;
  DockCommands tiles_;
  DockMenus menus_;
  DesktopTileServices tileServices_;
  TipHost tips_;
  CarryHost carry_;
  LiveDocks docks_;
  SeenWidgets seen_;
  PanelHost panels_;
  DockMenuHost menuHost_;
  DockQuestions questions_;
  DockController dock_;
  AttentionCalls calls_;
  std::unique_ptr<MessageLine> message_;
  std::unique_ptr<DockBubble> bubble_;
  quint64 bubbleEntry_ = 0;
};

}  // namespace tarnwick
