#include "app/AppDelegate.h"

#include <QApplication>
#include <algorithm>

#include "app/AppKeys.h"
#include "app/DockDesk.h"
#include "app/ExitGuards.h"
#include "app/HotKeyTable.h"
#include "app/MessageLine.h"
#include "app/NearbySender.h"
#include "app/PanelHost.h"
#include "app/Readings.h"
#include "app/SocketSession.h"
#include "app/StatusItem.h"
#include "base/DomainError.h"
#include "views/motion/Animator.h"
#include "views/theme/MenuStyle.h"
#include "views/theme/WindowPalette.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kAfterFirstFrame = 0.2;
/// By then the docks stand where a change of the layout or of the displays puts them.
constexpr double kOnceTheDocksStand = 0.06;

void call(const std::function<void()>& action) {
  if (action) action();
}

}  // namespace

AppDelegate::AppDelegate(StoreSetup store, DelegateSetup setup)
    : setup_(std::move(setup)), store_(std::make_unique<AppStore>(std::move(store))) {
  WindowClocks::set(setup_.ports.clocks);
  makeDock();
}

AppDelegate::~AppDelegate() {
  willTerminate();
  WindowClocks::set(nullptr);
}

void AppDelegate::didFinishLaunching() {
  const auto dressMenus = [panels = setup_.ports.panels] {
    MenuStyle::install().setComposited(panels->isComposited());
  };
  dressMenus();
  connect(setup_.ports.panels, &Panels::compositingChanged, this, dressMenus);
  setupMenu();
  setupHotKeys();
  connect(store_.get(), &AppStore::layoutChanged, this, &AppDelegate::layoutDidChange);
  if (setup_.guards) installExitGuards();
  listenToTheSession();
  listenToScreens();
  call(touchUpdates);
  followLoginEntry();
  connect(store_.get(), &AppStore::configChanged, this, &AppDelegate::applyLoginSwitch);
  // Whose settings were lost is told so by the message, and not greeted as new.
  if (!store_->config().onboardingComplete && !store_->hasLostSettings()) call(showOnboarding);
  applyAppearance();
  call(armBenchmark);
  QMetaObject::invokeMethod(this, &AppDelegate::comeUp, Qt::QueuedConnection);
}

void AppDelegate::comeUp() {
  if (down_) return;
  messages_ = std::make_unique<MessageLine>(
      DockBubbleParts{store_.get(), dock_.get(), setup_.ports.screens, setup_.ports.panels, panels_.get()});
  connect(messages_.get(), &MessageLine::changed, desk_.get(), &DockDesk::makeRoomForTheMessage);
  dock_->setMayShow(true);
  messages_->update();
  // What the first picture does not need comes once it is there.
  afterFirstFrame_ = store_->scheduler().after(kAfterFirstFrame, [this] {
    setup_.toggles->start();
    desk_->start();
    followRunningApps();
  });
}

void AppDelegate::willTerminate() {
  if (down_) return;
  down_ = true;
  afterFirstFrame_.reset();
  docksStand_.reset();
  call(stopApplicationAudio);
  panels_->closeAtOnce();
  desk_->shutdown();
  store_->shutdown();
  messages_.reset();
  panels_.reset();
  dock_->shutdown();
  if (keys_) keys_->release();
  if (setup_.session) setup_.session->release();
  if (setup_.door) setup_.door->release();
  status_.reset();
}

void AppDelegate::willTerminateWithoutDisplay() noexcept {
  if (down_) return;
  down_ = true;
  // Nothing may be painted any more, so nobody is told of anything.
  store_->blockSignals(true);
  try {
    call(stopApplicationAudio);
  } catch (...) {
  }
  try {
    store_->saveAtTheEnd();
  } catch (...) {
  }
  try {
    call(giveBack);
  } catch (...) {
  }
}

void AppDelegate::installExitGuards() {
  guards_ = std::make_unique<ExitGuards>([this] { quit(); });
}

void AppDelegate::listenToScreens() {
  const auto look = [this] {
    if (down_) return;
    docksStand_ = store_->scheduler().after(kOnceTheDocksStand, [this] { store_->setDockDisplays(dock_->displays()); });
  };
  connect(setup_.ports.screens, &Screens::changed, this, look);
  connect(store_.get(), &AppStore::layoutChanged, this, look);
  connect(dock_.get(), &DockController::placed, this, look);
}

void AppDelegate::quit() {
  willTerminate();
  QCoreApplication::exit(0);
}

void AppDelegate::layoutDidChange() {
  dock_->refresh();
  followRunningApps();
  applyAppearance();
  keys_->follow();
  if (status_) {
    status_->setVisible(store_->config().desktopOptions().showMenuBarIcon);
    status_->setClassicMenu(store_->config().desktopOptions().classicMenu);
  }
}

void AppDelegate::makeDock() {
  DockDeskParts parts;
  parts.store = store_.get();
  parts.screens = setup_.ports.screens;
  parts.panels = setup_.ports.panels;
  parts.motion = setup_.ports.motion;
  parts.running = setup_.applications;
  parts.windows = setup_.ports.windows;
  parts.apps = setup_.installedApps;
  parts.opener = setup_.opener;
  parts.files = setup_.files;
  parts.hints = setup_.hints;
  parts.readings = setup_.readings;
  parts.toggles = setup_.toggles;
  parts.colors = setup_.colors;
  parts.icons = setup_.icons;
  parts.sendNearby = nearbySender(setup_.installedApps->environment(), setup_.environment);
  parts.clocks = setup_.ports.clocks;
  desk_ = std::make_unique<DockDesk>(std::move(parts));
  dock_ = std::make_unique<DockController>(*store_, setup_.ports,
                                           [this](const QString& display) { return desk_->makeContent(display); });
  desk_->setController(dock_.get());
  setup_.readings->follow(*store_);
  connectDesk();
}

void AppDelegate::connectDesk() {
  PanelHostSetup host;
  host.toggles = setup_.toggles;
  host.panels = setup_.ports.panels;
  host.clocks = setup_.ports.clocks;
  host.motion = setup_.ports.motion;
  host.actions = [this] { return desk_->panelActions(); };
  host.readings = setup_.readings->services();
  host.sources = [this](const QString& display) { return desk_->sources(display); };
  host.opensDownwards = [this](const QString& display) { return desk_->opensDownwards(display); };
  panels_ = std::make_unique<PanelHost>(*store_, std::move(host));
  desk_->setPanelHost(panels_.get());
  connect(panels_.get(), &PanelHost::openChanged, this, [this](const QString& display, const QUuid& widget) {
    desk_->markOpen(display, widget);
    dock_->checkEdge();
  });
  desk_->openPanel = [this](const QString& display, const QUuid& widget, const QRect& tile) {
    if (Panel* panel = dock_->panel(display)) {
      panels_->open(display, widget, *panel, dock_->mapFromContent(display, tile));
    }
  };
  desk_->panelIsOpen = [this](const QString& display) { return panels_ && panels_->hasActivePanel(display); };
  desk_->closePanel = [this] {
    if (panels_) panels_->closeAtOnce();
  };
  desk_->dismissPanel = [this] {
    if (panels_) panels_->close();
  };
  desk_->mayNotSwipe = [this] {
    return (panels_ && !panels_->openWidget().isNull()) || (editorIsOpen && editorIsOpen());
  };
  desk_->addWidgets = [this] { call(addWidgets); };
  desk_->menus().dockActions = [this] {
    DockMenuActions actions;
    actions.addWidgets = addWidgets;
    actions.settings = showSettings;
    return actions;
  };
  desk_->messageHeight = [this] { return messages_ ? messages_->height() : 0; };
  dock_->hasActivePanel = [this](const QString& display) { return desk_->isBusy(display); };
  dock_->hasOpenWindow = [this] { return windowHoldsDock && windowHoldsDock(); };
  connect(dock_.get(), &DockController::goesAway, this, [this](const QString& display) {
    if (panels_) panels_->closeOn(display);
  });
  connect(dock_.get(), &DockController::placed, this, [this](const QString& display) {
    if (!panels_ || !panels_->hasActivePanel(display)) return;
    panels_->follow(dock_->mapFromContent(display, desk_->besideRect(display, panels_->openWidget())));
  });
  focusDock = [this] { dock_->focus(); };
  restoreSystemDock = [this] { dock_->restoreSystemDock(); };
  giveBack = [this] { dock_->giveBack(); };
}

void AppDelegate::followRunningApps() {
  // Following windows has its price, so it goes on only while something shows them.
  const bool shown = store_->config().liveApps || store_->active().families.contains(u"windows"_s) ||
                     store_->active().families.contains(u"launcher"_s) ||
                     store_->active().kinds.contains(u"openWindows"_s);
  if (shown) {
    setup_.applications->start();
  } else {
    setup_.applications->stop();
  }
}

void AppDelegate::applyAppearance() {
  // Panels follow the dock's style; menus and windows follow this.
  const QString& wanted = store_->config().appAppearance;
  const ToggleState desktop = setup_.toggles->state(Toggle::DarkMode);
  const bool dark = wanted == "dark"_L1 || (wanted != "light"_L1 && desktop.on);
  if (isDark_ == dark) return;
  isDark_ = dark;
  QApplication::setPalette(windowPalette(dark));
}

Autostart AppDelegate::autostart() const { return {setup_.executable, setup_.autostartFile}; }

void AppDelegate::followLoginEntry() {
  launchesAtLogin_ = autostart().isOn();
  store_->followLoginEntry(launchesAtLogin_);
}

/// The switch, or its undo, is all that changes this setting; the entry is the user's at any other time.
void AppDelegate::applyLoginSwitch() {
  if (down_ || store_->config().launchAtLogin == launchesAtLogin_) return;
  launchesAtLogin_ = store_->config().launchAtLogin;
  try {
    autostart().set(launchesAtLogin_);
  } catch (const DomainError& failure) {
    store_->setError(failure.message());
    // Whoever is told of the change now shall hear of it before it is taken back.
    QMetaObject::invokeMethod(this, &AppDelegate::followLoginEntry, Qt::QueuedConnection);
  }
}

// --- Keys and menus -------------------------------------------------------------------------------------------------

void AppDelegate::setupHotKeys() {
  keys_ = std::make_unique<AppKeys>(*store_, setup_.hotKeys);
  keys_->hasCommandBar = [this] { return static_cast<bool>(toggleCommandBar); };
  keys_->canFocusDock = [this] { return static_cast<bool>(focusDock); };
  connect(keys_.get(), &AppKeys::pressed, this, &AppDelegate::hotKeyPressed);
  keys_->follow();
}

void AppDelegate::hotKeyPressed(quint32 identifier) {
  if (identifier == HotKeyTable::kToggle) perform({Order::Kind::Toggle, 0});
  if (identifier == HotKeyTable::kCommandBar) perform({Order::Kind::CommandBar, 0});
  if (identifier == HotKeyTable::kFocus) perform({Order::Kind::Focus, 0});
  if (identifier >= HotKeyTable::kFirstProfile) {
    perform({Order::Kind::Profile, static_cast<int>(identifier - HotKeyTable::kFirstProfile)});
  }
}

void AppDelegate::setupMenu() {
  const auto state = [this] {
    return MenuState{store_->config().onboardingComplete, store_->config().layout, store_->error()};
  };
  status_ = std::make_unique<StatusItem>(state, [this] { return menuActions(); });
  status_->setVisible(store_->config().desktopOptions().showMenuBarIcon);
  status_->setClassicMenu(store_->config().desktopOptions().classicMenu);
  const auto refresh = [this] {
    if (status_) status_->refresh();
  };
  connect(store_.get(), &AppStore::errorChanged, this, refresh);
  connect(store_.get(), &AppStore::layoutChanged, this, refresh);
}

std::unique_ptr<QMenuBar> AppDelegate::makeMenuBar() {
  return makeApplicationMenu([this] { return menuActions(); });
}

const QString& AppDelegate::commandBarKey() const {
  static const QString none;
  return keys_ ? keys_->commandBarKey() : none;
}

bool AppDelegate::hasTray() const { return status_ && status_->hasTray(); }

QRect AppDelegate::statusItemPlace() const { return status_ ? status_->place() : QRect(); }

MenuActions AppDelegate::menuActions() {
  MenuActions actions;
  actions.toggleDock = [this] { dock_->toggle(); };
  actions.about = showAbout;
  actions.help = showHelp;
  // The end takes the menu down, so it waits until the menu has done with the choice.
  actions.quit = [this] { QMetaObject::invokeMethod(this, &AppDelegate::quit, Qt::QueuedConnection); };
  actions.dismissError = [this] { store_->clearError(); };
  actions.chooseLayout = [this](DockLayout layout) {
    desk_->edits().change([layout](DockConfiguration& config) { config.layout = layout; });
  };
  actions.settings = showSettings;
  actions.continueSetup = showOnboarding;
  actions.commandBar = toggleCommandBar;
  actions.addWidgets = addWidgets;
  actions.folderIcons = folderIcons;
  actions.openSpace = openSpace;
  actions.saveSpace = saveSpace;
  actions.checkForUpdates = checkForUpdates;
  actions.restoreSystemDock = restoreSystemDock;
  actions.togglePanel = toggleMenuBarPanel;
  actions.hidePanel = hideMenuBarPanel;
  actions.openMenu = openStatusMenu;
  return actions;
}

}  // namespace tarnwick
