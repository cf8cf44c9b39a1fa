#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "app/ports/SessionApplication.h"
#include "apps/LaunchEnvironment.h"
#include "base/Scheduler.h"
#include "dock/DockController.h"
#include "store/AppStore.h"
#include "store/Commands.h"
#include "store/Services.h"

namespace tarnwick {

class AppKeys;
class AppNumbers;
class Appearance;
class ClipboardKeeper;
class CommandBarHost;
class DockDisplays;
class DockPresenter;
class ExitGuards;
class IndexedFileSearch;
class LoginEntry;
class Orders;
class ProgramCommands;
class Readings;
class RunningAppsWatch;
class SocketSession;
class StatusItem;
class Windows;

/// What the delegate is made of beside the services. References outlive it.
struct DelegateSetup {
  DockPreferenceAccess& preferences;  ///< Of the system's own dock.
  DockGuard& guard;
  SessionApplication& application;  ///< This program on the session bus.
  SocketSession& socket;            ///< What other copies of the program reach it by where there is no bus.
  Readings& readings;
  ClipboardKeeper& clipboard;
  IndexedFileSearch& fileSearch;  ///< Of the user's home.
  QString executable;
  /// What a new build of the program is started with.
  LaunchEnvironment environment;
  QString autostartFile;      ///< Where the login entry is.
  bool framesWindows = true;  ///< Whether the desktop puts a frame with a title around a program's windows.
  /// Joins to the store what calls for the user by it.
  std::function<void(AppStore& store)> follow = {};
  /// Whether exit guards are installed; a test that runs the program in its own process keeps its signals.
  bool guards = true;
  /// Whether this run measures itself; then it never gives way to a new build.
  bool measures = false;
  /// Whether another copy of the program gave way to this one.
  bool replaces = false;
};

/// The running program: it owns the store, the docks, the windows, the keys and the status item, and brings them up and
/// down in their fixed order. What a user asks for goes to commands().
class AppDelegate : public QObject {
  Q_OBJECT
 public:
  AppDelegate(StoreSetup store, const Services& services, DelegateSetup setup);
  ~AppDelegate() override;

  AppStore& store() { return *store_; }
  Commands& commands();
  DockPresenter& presenter() { return *presenter_; }
  DockController& dock();
  Windows& windows() { return *windows_; }
  CommandBarHost& commandBar() { return *commandBar_; }
  AppKeys& keys() { return *keys_; }
  /// What is asked from outside.
  Orders& orders() { return *orders_; }
  LoginEntry& loginEntry() { return *loginEntry_; }
  const Appearance& appearance() const { return *appearance_; }
  /// Since didFinishLaunching.
  StatusItem& statusItem() { return *status_; }

  /// Brings the program up, in its fixed order. Call once, before the event loop runs.
  void didFinishLaunching();
  /// Takes the program down, in its fixed order. Further calls do nothing.
  void willTerminate();
  /// The same when the display is gone and the process is about to end: saves, and gives back what needs no window.
  void willTerminateWithoutDisplay() noexcept;

  /// Ends it at once.
  void quit();

 private:
  void setupHotKeys();
  void installExitGuards();
  void listenToTheSession();
  void comeUp();

  const Services& services_;
  DelegateSetup setup_;
  std::unique_ptr<AppStore> store_;
  std::unique_ptr<ProgramCommands> commands_;
  // In the order in which they follow a change of the layout; the status item is the last.
  std::unique_ptr<DockPresenter> presenter_;
  std::unique_ptr<RunningAppsWatch> runningApps_;
  std::unique_ptr<Appearance> appearance_;
  std::unique_ptr<AppKeys> keys_;
  std::unique_ptr<DockDisplays> displays_;
  std::unique_ptr<AppNumbers> numbers_;
  std::unique_ptr<Orders> orders_;
  std::unique_ptr<LoginEntry> loginEntry_;
  std::unique_ptr<StatusItem> status_;
  std::unique_ptr<Windows> windows_;
  std::unique_ptr<CommandBarHost> commandBar_;
  std::unique_ptr<ExitGuards> guards_;
  JobHandle afterFirstFrame_;
  bool down_ = false;
};

}  // namespace tarnwick
