#pragma once

#include <QObject>
#include <memory>
#include <optional>

#include "app/Autostart.h"
#include "app/CommandLine.h"
#include "app/StatusMenu.h"
#include "app/ports/SessionApplication.h"
#include "apps/AppOpener.h"
#include "apps/LaunchEnvironment.h"
#include "apps/ports/LauncherHints.h"
#include "base/Scheduler.h"
#include "desktop/Files.h"
#include "desktop/HotKeys.h"
#include "desktop/Notifications.h"
#include "desktop/Panels.h"
#include "desktop/ScreenColors.h"
#include "desktop/Screens.h"
#include "desktop/Toggles.h"
#include "dock/DockController.h"
#include "store/AppStore.h"
#include "views/dock/DockView.h"

namespace tarnwick {

class AppKeys;
class ExitGuards;
class DockDesk;
class MessageLine;
class PanelHost;
class Readings;
class SocketSession;
class StatusItem;

/// What the delegate is made of. Pointers are borrowed and outlive it; `session` and `hotKeys` may be null.
struct DelegateSetup {
  DockPorts ports;
  HotKeys* hotKeys = nullptr;
  SessionApplication* session = nullptr;
  SocketSession* door = nullptr;  ///< The same without a bus; may be null.
  SessionEvents* events = nullptr;
  Notifications* notifications = nullptr;
  Toggles* toggles = nullptr;  ///< Required.
  ScreenColors* colors = nullptr;
  DockView::IconProvider icons;
  InstalledApps* installedApps = nullptr;
  AppOpener* opener = nullptr;
  Files* files = nullptr;
  LauncherHints* hints = nullptr;
  Readings* readings = nullptr;
  RunningApplications* applications = nullptr;
  QString executable;
  /// What a new build of the program is started with.
  LaunchEnvironment environment = LaunchEnvironment::ofProcess();
  QString autostartFile;      ///< Where the login entry stands.
  bool framesWindows = true;  ///< Whether the desktop puts a frame with a title around a program's windows.
  /// Whether exit guards are installed; a test that runs the program in its own process keeps its signals.
  bool guards = true;
  /// Whether this run measures itself; then it never gives way to a new build.
  bool measures = false;
};

/// The running program: it owns the store and the dock, and puts keys, menus and signals in front of them.
class AppDelegate : public QObject {
  Q_OBJECT
 public:
  AppDelegate(StoreSetup store, DelegateSetup setup);
  ~AppDelegate() override;

  AppStore& store() { return *store_; }
  DockController& dock() { return *dock_; }

  /// Brings the program up, in its fixed order. Call once, before the event loop runs.
  void didFinishLaunching();
  /// Takes the program down, in its fixed order. Further calls do nothing.
  void willTerminate();
  /// The same when the display is gone and the process is about to end: saves, and gives back what needs no window.
  void willTerminateWithoutDisplay() noexcept;

  void perform(const Order& order);
  /// Files handed to the program: Space files are imported, others ignored.
  void open(const QStringList& urls);
  /// The user opened the program while it runs.
  void reopen();

  /// The menu bar of one of the program's own windows. Never null.
  std::unique_ptr<QMenuBar> makeMenuBar();
  /// The key that opens the command bar now, as a person reads it; empty while none does.
  const QString& commandBarKey() const;
  /// Whether the desktop has a tray for the status item, as far as it is known by now.
  bool hasTray() const;
  /// Where the status item stands on the desktop; empty where the tray does not tell.
  QRect statusItemPlace() const;
  DockDesk& desk() { return *desk_; }
  /// Since didFinishLaunching.
  AppKeys& keys() { return *keys_; }
  /// Shows the switch of the login entry as the entry is.
  void followLoginEntry();
  Autostart autostart() const;
  bool isDark() const { return isDark_.value_or(true); }
  void quit();

  // Set by the parts of the program that bring them. Those with a hot key (toggleCommandBar, focusDock) and those that
  // the start calls must be set before didFinishLaunching; a menu entry is enabled once its part is there.
  /// Takes a Space file.
  std::function<void(const QString& path)> importSpace;
  // These open their windows.
  std::function<void()> showSettings;
  std::function<void()> showOnboarding;
  std::function<void()> addWidgets;
  std::function<void(const QUuid& widget)> openEditor;
  /// Whether a window is open that is about the docks, which stay out meanwhile; checkEdge() when the answer changed.
  std::function<bool()> windowHoldsDock;
  std::function<bool()> editorIsOpen;
  std::function<void()> showAbout;
  std::function<void()> showHelp;
  std::function<void()> folderIcons;
  std::function<void()> openSpace;
  std::function<void()> saveSpace;
  /// Shows the command bar; when it is visible, hides it.
  std::function<void()> toggleCommandBar;
  /// Gives the dock the keyboard.
  std::function<void()> focusDock;
  std::function<void()> checkForUpdates;
  std::function<void()> restoreSystemDock;
  /// The small window below the status item.
  std::function<void()> toggleMenuBarPanel;
  std::function<void()> hideMenuBarPanel;
  std::function<void(QMenu& menu)> openStatusMenu;
  // At the start: makes the update controller; begins a measurement that was asked for.
  std::function<void()> touchUpdates;
  std::function<void()> armBenchmark;
  /// First of all at the end: gives applications their own sound back.
  std::function<void()> stopApplicationAudio;
  /// Gives back what was borrowed of the desktop and needs no window, where the ordinary end is not possible.
  std::function<void()> giveBack;

 private:
  void setupMenu();
  void setupHotKeys();
  void installExitGuards();
  void listenToTheSession();
  void makeDock();
  void connectDesk();
  void followRunningApps();
  void applyAppearance();
  void applyLoginSwitch();
  void comeUp();
  void listenToScreens();
  void listenTo(SessionApplication& session);
  QJsonObject restoreForOthers();
  void takeOrder(const QString& action, const QVariantList& parameter);
  bool handOverToTheNewBuild();
  void hotKeyPressed(quint32 identifier);
  void selectProfileAt(int index);
  void layoutDidChange();
  MenuActions menuActions();

  DelegateSetup setup_;
  std::unique_ptr<AppStore> store_;
  std::unique_ptr<DockDesk> desk_;
  std::unique_ptr<DockController> dock_;
  std::unique_ptr<PanelHost> panels_;
  std::unique_ptr<StatusItem> status_;
  std::unique_ptr<AppKeys> keys_;
  std::unique_ptr<MessageLine> messages_;
  std::unique_ptr<ExitGuards> guards_;
  JobHandle afterFirstFrame_;
  JobHandle docksStand_;
  std::optional<bool> isDark_;
  bool launchesAtLogin_ = false;
  bool down_ = false;
};

}  // namespace tarnwick
