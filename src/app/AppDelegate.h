#pragma once

#include <QObject>
#include <memory>

#include "app/CommandLine.h"
#include "app/StatusMenu.h"
#include "app/ports/SessionApplication.h"
#include "base/Scheduler.h"
#include "desktop/HotKeys.h"
#include "desktop/Panels.h"
#include "desktop/Screens.h"
#include "desktop/Toggles.h"
#include "dock/DockController.h"
#include "store/AppStore.h"
#include "views/dock/DockView.h"

namespace tarnwick {

class ExitGuards;
class MessageLine;
class StatusItem;

/// What the delegate is made of. Pointers are borrowed and outlive it; `session` and `hotKeys` may be null.
struct DelegateSetup {
  Screens* screens = nullptr;
  Panels* panels = nullptr;
  HotKeys* hotKeys = nullptr;
  SessionApplication* session = nullptr;
  SessionEvents* events = nullptr;
  Toggles* toggles = nullptr;  ///< Required.
  DockView::IconProvider icons;
  /// Brings a running application to the front.
  std::function<void(quint64 application)> bringApplication;
  RunningApplications* applications = nullptr;
  QString executable;
  QString autostartFile;  ///< Where the login entry stands.
  /// Whether exit guards are installed; a test that runs the program in its own process keeps its signals.
  bool guards = true;
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

  void perform(const Order& order);
  /// Files handed to the program: Space files are imported, others ignored.
  void open(const QStringList& urls);
  /// The user opened the program while it runs.
  void reopen();

  /// Takes a Space file; set by the part that imports them.
  std::function<void(const QString& path)> importSpace;
  /// Open their windows; set by the part that builds them.
  std::function<void()> showSettings;
  std::function<void()> showOnboarding;
  std::function<void()> showCommandBar;

 private:
  void setupMenu();
  void setupHotKeys();
  void installExitGuards();
  void listenToTheSession();
  std::unique_ptr<DockContent> makeContent(const QString& display);
  void followRunningApps();
  void applyAppearance();
  void applyAutostart();
  void hotKeyPressed(quint32 identifier);
  void selectProfileAt(int index);
  void layoutDidChange();
  void showAbout();
  void quit();
  MenuActions menuActions();

  DelegateSetup setup_;
  std::unique_ptr<AppStore> store_;
  std::unique_ptr<DockController> dock_;
  std::unique_ptr<StatusItem> status_;
  std::unique_ptr<MessageLine> messages_;
  std::unique_ptr<ExitGuards> guards_;
  JobHandle afterFirstFrame_;
  QString shortcutSignature_;
  std::optional<bool> isDark_;
  bool down_ = false;
};

}  // namespace tarnwick
