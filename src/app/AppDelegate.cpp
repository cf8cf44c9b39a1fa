#include "app/AppDelegate.h"

#include <QApplication>
#include "app/AppKeys.h"
#include "app/AppNumbers.h"
#include "app/Appearance.h"
#include "app/ClipboardKeeper.h"
#include "app/CommandBarHost.h"
#include "app/DockDisplays.h"
#include "app/DockPresenter.h"
#include "app/ExitGuards.h"
#include "app/LoginEntry.h"
#include "app/Orders.h"
#include "app/ProgramCommands.h"
#include "app/Readings.h"
#include "app/RunningAppsWatch.h"
#include "app/StatusItem.h"
#include "app/Windows.h"
#include "apps/InstalledApps.h"
#include "desktop/SessionEvents.h"
#include "desktop/Toggles.h"
#include "views/controls/PanelTip.h"
#include "views/onboarding/FirstRun.h"
#include "views/theme/MenuStyle.h"

namespace tarnwick {

namespace {

constexpr double kAfterFirstFrame = 0.2;

}  // namespace

AppDelegate::AppDelegate(StoreSetup store, const Services& services, DelegateSetup setup)
    : services_(services),
      setup_(std::move(setup)),
      store_(std::make_unique<AppStore>(std::move(store))),
      commands_(std::make_unique<ProgramCommands>(*store_, services, setup_.readings)) {
  const auto editorIsOpen = [this] { return windows_ && windows_->hasEditor(); };
  presenter_ = std::make_unique<DockPresenter>(
      *store_, services, *commands_,
      DockPresenterSetup{setup_.preferences, setup_.guard, setup_.readings, editorIsOpen});
  runningApps_ = std::make_unique<RunningAppsWatch>(*store_, services.runningApps);
  appearance_ = std::make_unique<Appearance>(*store_, services.toggles, services.contrast);
  connect(appearance_.get(), &Appearance::lookChanged, presenter_.get(), &DockPresenter::takeLook);
  keys_ = std::make_unique<AppKeys>(*store_, services.hotKeys, *commands_);
  displays_ = std::make_unique<DockDisplays>(*store_, services.screens, dock());
  numbers_ = std::make_unique<AppNumbers>(services.scheduler, services.modifiers);
  orders_ =
      std::make_unique<Orders>(*store_, *commands_,
                               OrdersSetup{setup_.application, setup_.socket, setup_.executable, setup_.environment,
                                           !setup_.measures, [this] { return presenter_->apps(); },
                                           [this] { return dock().giveSystemDockBack(); }, [this] { quit(); }});
  loginEntry_ = std::make_unique<LoginEntry>(*store_, Autostart{setup_.executable, setup_.autostartFile});
  windows_ =
      std::make_unique<Windows>(WindowsParts{*store_, *commands_, *presenter_, *keys_, *loginEntry_, *appearance_,
                                             setup_.readings.connections(), setup_.preferences, setup_.framesWindows},
                                services);
  const auto shownDock = [this](const QString& display) {
    return dock().isVisible(display) ? dock().frame(display) : QRectF();
  };
  commandBar_ =
      std::make_unique<CommandBarHost>(CommandBarHost::Parts{*store_, *commands_, setup_.clipboard.history(),
                                                             setup_.fileSearch, &windows_->settingsPlaces(), shownDock},
                                       services);
  connect(commandBar_.get(), &CommandBarHost::aboutToShow, presenter_.get(), &DockPresenter::giveWay);
  commands_->setTargets({*presenter_, *windows_, *commandBar_, [this] { quit(); }});
  dock().hasOpenWindow = [this] { return windows_ && windows_->holdsDock(); };
  setup_.readings.follow(*store_);
  if (setup_.follow) setup_.follow(*store_);
  setup_.clipboard.follow(*store_);
}

AppDelegate::~AppDelegate() {
  willTerminate();
  windows_.reset();
}

Commands& AppDelegate::commands() { return *commands_; }

DockController& AppDelegate::dock() { return presenter_->dock(); }

void AppDelegate::didFinishLaunching() {
  MenuStyle::installFor(services_.panels);
  PanelTip::install(!services_.screens.placesWindows());
  status_ = std::make_unique<StatusItem>(*store_, *commands_, services_.tray);
  windows_->followStatusItem(*status_);
  setupHotKeys();
  if (setup_.guards) installExitGuards();
  listenToTheSession();
  loginEntry_->follow();
  if (setup_.replaces) setup_.clipboard.takeOver();
  // A user whose settings were lost learns it from the message, and is not greeted as new.
  if (!store_->config().onboardingComplete && !store_->hasLostSettings()) commands_->continueSetup();
  chooseForNewUser(*store_);
  appearance_->apply();
  QMetaObject::invokeMethod(this, &AppDelegate::comeUp, Qt::QueuedConnection);
}

void AppDelegate::comeUp() {
  if (down_) return;
  presenter_->show();
  // What the first picture does not need comes once it is there.
  afterFirstFrame_ = store_->scheduler().after(kAfterFirstFrame, [this] {
    services_.toggles.start();
    presenter_->start();
    // So that the first letter in the command bar finds them.
    const auto load = [this] {
      if (store_->config().desktopOptions().commandBarEnabled) services_.installedApps.load();
    };
    connect(store_.get(), &AppStore::configChanged, this, load);
    load();
    setup_.clipboard.knowApps();
    runningApps_->follow();
  });
}

void AppDelegate::willTerminate() {
  if (down_) return;
  down_ = true;
  orders_->stop();
  loginEntry_->stop();
  afterFirstFrame_.reset();
  displays_->stop();
  appearance_->stop();
  commandBar_->hide();
  presenter_->closeAll();
  store_->shutdown();
  presenter_->shutdown();
  keys_->release();
  orders_->release();
  status_.reset();
}

void AppDelegate::willTerminateWithoutDisplay() noexcept {
  if (down_) return;
  down_ = true;
  orders_->stop();
  loginEntry_->stop();
  // Nothing may be painted any more, so no signal is emitted.
  store_->blockSignals(true);
  try {
    store_->saveAtTheEnd();
  } catch (...) {
  }
  dock().giveBack();
}

void AppDelegate::listenToTheSession() {
  // The session's manager asks every program to save before it ends the session.
  connect(qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager&) { store_->save(); });
  connect(qApp, &QCoreApplication::aboutToQuit, this, &AppDelegate::willTerminate);
  connect(&services_.session, &SessionEvents::ending, this, &AppDelegate::quit);
  orders_->listen();
}

void AppDelegate::installExitGuards() {
  guards_ = std::make_unique<ExitGuards>([this] { quit(); });
}

void AppDelegate::quit() {
  willTerminate();
  QCoreApplication::exit(0);
}

void AppDelegate::setupHotKeys() {
  connect(keys_.get(), &AppKeys::pressed, numbers_.get(), &AppNumbers::hide);
  connect(keys_.get(), &AppKeys::pressed, orders_.get(), &Orders::performKey);
  connect(keys_.get(), &AppKeys::changed, numbers_.get(), [this] { numbers_->setOn(!keys_->apps().isEmpty()); });
  connect(numbers_.get(), &AppNumbers::changed, presenter_.get(),
          [this] { presenter_->showNumbers(numbers_->areShown() ? keys_->apps() : QSet<int>()); });
  keys_->follow();
}

}  // namespace tarnwick
