#include "app/AppDelegate.h"

#include <QApplication>
#include <QFileInfo>
#include <QMessageBox>
#include <QProcess>
#include <QUrl>
#include <algorithm>

#include "app/Autostart.h"
#include "app/ExitGuards.h"
#include "app/HotKeyTable.h"
#include "app/MessageLine.h"
#include "app/SingleInstance.h"
#include "app/StatusItem.h"
#include "base/DomainError.h"
#include "views/dock/LiveDock.h"
#include "views/theme/WindowPalette.h"

namespace tarnwick {

namespace {

constexpr double kAfterFirstFrame = 0.2;

}  // namespace

using namespace Qt::StringLiterals;

AppDelegate::AppDelegate(StoreSetup store, DelegateSetup setup)
    : setup_(std::move(setup)), store_(std::make_unique<AppStore>(std::move(store))) {
  dock_ = std::make_unique<DockController>(*store_, *setup_.screens, *setup_.panels,
                                           [this](const QString& display) { return makeContent(display); });
}

AppDelegate::~AppDelegate() { willTerminate(); }

void AppDelegate::didFinishLaunching() {
  setupMenu();
  setupHotKeys();
  connect(store_.get(), &AppStore::layoutChanged, this, &AppDelegate::layoutDidChange);
  if (setup_.guards) installExitGuards();
  listenToTheSession();
  if (!store_->config().onboardingComplete && showOnboarding) showOnboarding();
  applyAppearance();
  messages_ = std::make_unique<MessageLine>(*store_, *dock_, *setup_.screens, *setup_.panels);
  dock_->setMayShow(true);
  messages_->update();
  // What the first picture does not need comes once it is there.
  afterFirstFrame_ = store_->scheduler().after(kAfterFirstFrame, [this] {
    setup_.toggles->start();
    followRunningApps();
    applyAutostart();
  });
}

void AppDelegate::willTerminate() {
  if (down_) return;
  down_ = true;
  afterFirstFrame_.reset();
  store_->shutdown();
  messages_.reset();
  dock_->shutdown();
  if (setup_.hotKeys) setup_.hotKeys->unbindAll();
  if (setup_.session) setup_.session->release();
  status_.reset();
}

void AppDelegate::installExitGuards() {
  guards_ = std::make_unique<ExitGuards>([this] { quit(); });
}

void AppDelegate::listenToTheSession() {
  // The session's manager asks every program to save before it ends the session.
  connect(qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager&) { store_->save(); });
  connect(qApp, &QCoreApplication::aboutToQuit, this, &AppDelegate::willTerminate);
  connect(setup_.toggles, &Toggles::changed, this, &AppDelegate::applyAppearance);
  if (setup_.events) connect(setup_.events, &SessionEvents::ending, this, &AppDelegate::quit);
  if (!setup_.session) return;
  connect(setup_.session, &SessionApplication::activated, this, &AppDelegate::reopen);
  connect(setup_.session, &SessionApplication::openRequested, this, &AppDelegate::open);
  connect(setup_.session, &SessionApplication::actionRequested, this,
          [this](const QString& action, const QVariantList& parameter) {
            if (action == "quit"_L1) quit();
            if (action == "toggle"_L1) perform({Order::Kind::Toggle, 0});
            if (action == "command-bar"_L1) perform({Order::Kind::CommandBar, 0});
            if (action == "focus"_L1) perform({Order::Kind::Focus, 0});
            if (action == "profile"_L1) perform({Order::Kind::Profile, parameter.value(0).toInt()});
          });
  setup_.session->own();
}

void AppDelegate::quit() {
  willTerminate();
  QCoreApplication::exit(0);
}

void AppDelegate::layoutDidChange() {
  dock_->refresh();
  followRunningApps();
  applyAutostart();
  applyAppearance();
  setupHotKeys();
  if (status_) {
    status_->setVisible(store_->config().desktopOptions().showMenuBarIcon);
    status_->setClassicMenu(store_->config().desktopOptions().classicMenu);
  }
}

std::unique_ptr<DockContent> AppDelegate::makeContent(const QString& display) {
  DockActions actions;
  actions.bringApplication = setup_.bringApplication;
  return std::make_unique<LiveDock>(*store_, *setup_.toggles, display, setup_.icons, std::move(actions));
}

void AppDelegate::followRunningApps() {
  // Following windows has its price, so it begins only when something shows them.
  const bool shown = store_->config().liveApps || store_->active().families.contains(u"windows"_s) ||
                     store_->active().kinds.contains(u"openWindows"_s);
  if (shown && setup_.applications) setup_.applications->start();
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

void AppDelegate::applyAutostart() {
  try {
    Autostart::apply(store_->config().launchAtLogin, setup_.executable, setup_.autostartFile);
  } catch (const DomainError& failure) {
    store_->setError(failure.message());
  }
}

void AppDelegate::perform(const Order& order) {
  switch (order.kind) {
    case Order::Kind::Toggle:
      dock_->toggle();
      break;
    case Order::Kind::CommandBar:
      if (showCommandBar) showCommandBar();
      break;
    case Order::Kind::Focus:
      if (dock_->isManuallyHidden()) dock_->toggle();
      break;
    case Order::Kind::Profile:
      selectProfileAt(order.profile);
      break;
  }
}

void AppDelegate::selectProfileAt(int index) {
  const auto& profiles = store_->config().profiles;
  if (index >= 0 && index < profiles.size()) store_->selectProfile(profiles[index].id);
}

void AppDelegate::open(const QStringList& urls) {
  for (const QString& text : urls) {
    const QUrl url(text);
    const QString path = url.isLocalFile() ? url.toLocalFile() : text;
    const bool isSpace = QFileInfo(path).suffix().compare("tarnwickspace"_L1, Qt::CaseInsensitive) == 0;
    if (isSpace && importSpace) importSpace(path);
  }
}

void AppDelegate::reopen() {
  if (SingleInstance::isStale(setup_.executable)) {
    // The file was replaced by a new build: it takes over by asking this copy to quit.
    QProcess::startDetached(setup_.executable, {});
    return;
  }
  if (showSettings) {
    showSettings();
  } else if (dock_->isManuallyHidden()) {
    dock_->toggle();
  }
}

// --- Keys and menus -------------------------------------------------------------------------------------------------

void AppDelegate::setupHotKeys() {
  if (!setup_.hotKeys) return;
  const DesktopOptions options = store_->config().desktopOptions();
  const QString signature = HotKeyTable::signature(options);
  if (signature == shortcutSignature_) return;
  if (shortcutSignature_.isEmpty()) {
    connect(setup_.hotKeys, &HotKeys::pressed, this, &AppDelegate::hotKeyPressed);
  }
  shortcutSignature_ = signature;
  setup_.hotKeys->unbindAll();
  bool allBound = true;
  for (const HotKeyTable::Row& row : HotKeyTable::rows(options)) {
    // A key is not taken from others before there is something for it to open.
    if (row.identifier == HotKeyTable::kCommandBar && !showCommandBar) continue;
    allBound = setup_.hotKeys->bind(row.identifier, row.wish).bound && allBound;
  }
  if (!allBound) {
    store_->setError(
        tr("A Tarnwick shortcut is already used by another app. Choose a different shortcut in Settings."));
  }
}

void AppDelegate::hotKeyPressed(quint32 identifier) {
  if (identifier == HotKeyTable::kToggle) dock_->toggle();
  if (identifier == HotKeyTable::kCommandBar && showCommandBar) showCommandBar();
  if (identifier >= HotKeyTable::kFirstProfile) {
    selectProfileAt(static_cast<int>(identifier - HotKeyTable::kFirstProfile));
  }
}

void AppDelegate::setupMenu() {
  const auto state = [this] {
    return MenuState{store_->config().onboardingComplete, store_->config().layout, store_->error()};
  };
  status_ = std::make_unique<StatusItem>(state, menuActions());
  status_->setVisible(store_->config().desktopOptions().showMenuBarIcon);
  status_->setClassicMenu(store_->config().desktopOptions().classicMenu);
}

MenuActions AppDelegate::menuActions() {
  MenuActions actions;
  actions.toggleDock = [this] { dock_->toggle(); };
  actions.about = [this] { showAbout(); };
  actions.quit = [this] { quit(); };
  actions.dismissError = [this] { store_->clearError(); };
  actions.chooseLayout = [this](DockLayout layout) {
    store_->edit([layout](DockConfiguration& config) { config.layout = layout; });
  };
  if (showSettings) actions.settings = showSettings;
  if (showOnboarding) actions.continueSetup = showOnboarding;
  if (showCommandBar) actions.commandBar = showCommandBar;
  return actions;
}

void AppDelegate::showAbout() {
  auto* box = new QMessageBox(
      QMessageBox::NoIcon, tr("About Tarnwick"),
      tr("<b>Tarnwick %1</b><p>A dock of live widgets.</p>").arg(QStringLiteral(TARNWICK_VERSION)), QMessageBox::Close);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->show();
}

}  // namespace tarnwick
