#include "app/Windows.h"

#include <QApplication>
#include <algorithm>

#include "app/AppKeys.h"
#include "app/DockDesk.h"
#include "app/MenuBarPopup.h"
#include "desktop/VirtualKeys.h"
#include "dock/rules/DockPlacement.h"
#include "views/library/EditorWindow.h"
#include "views/library/LibraryWindow.h"
#include "views/onboarding/AboutWindow.h"
#include "views/onboarding/AppMark.h"
#include "views/onboarding/HelpWindow.h"
#include "views/onboarding/OnboardingWindow.h"
#include "views/settings/SettingsWindow.h"
#include "views/window/LayoutCard.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kDockPictureSide = 2560;  // A dock is no wider on most displays, and what lies on it is blurred.

bool isOpen(const QWidget* window) { return window && window->isVisible() && !window->isMinimized(); }

}  // namespace

Windows::Windows(AppDelegate& delegate, const DelegateSetup& services)
    : delegate_(delegate),
      services_(services),
      places_(*services.ports.screens, [this](const Screen& screen) { return dockOn(screen); }) {
  delegate.showSettings = [this] { showSettings(); };
  delegate.addWidgets = [this] { showLibrary(actedOn()); };
  delegate.openEditor = [this](const QUuid& widget) { showEditor(widget); };
  delegate.desk().menus().editWidget = delegate.openEditor;
  delegate.windowHoldsDock = [this] { return holdsDock(); };
  delegate.editorIsOpen = [this] { return hasEditor(); };
  delegate.showOnboarding = [this] { showOnboarding(); };
  delegate.showAbout = [this] { showAbout(); };
  delegate.showHelp = [this] { showHelp(); };
  delegate.toggleMenuBarPanel = [this] { menuBar().toggle(delegate_.statusItemPlace(), delegate_.isDark()); };
  delegate.openStatusMenu = [this](QMenu& menu) { menuBar().openMenu(menu, delegate_.statusItemPlace()); };
  delegate.hideMenuBarPanel = [this] {
    if (menuBar_) menuBar_->hide();
  };
  connect(services.ports.motion, &MotionPreference::changed, this, &Windows::followMotion);
  connect(&delegate.dock(), &DockController::placed, &places_, &WindowPlaces::docksMoved);
  connect(&delegate.dock(), &DockController::goesAway, &places_, &WindowPlaces::docksMoved);
}

/// Pictures that are on the screen follow the desktop.
void Windows::followMotion() {
  const bool reduces = services_.ports.motion->reducesMotion();
  for (const QWidget* window : QApplication::topLevelWidgets())
    for (LayoutCard* card : window->findChildren<LayoutCard*>()) card->setReduceMotion(reduces);
}

Windows::~Windows() {
  QList<AppWindow*> all{settings_, library_, onboarding_, about_, help_};
  for (const auto& editor : editors_) all << editor;
  qDeleteAll(all);
}

template <class Window, class Make>
void Windows::present(QPointer<Window>& window, const QString& name, const WindowPlaces::Wish& wish, const Make& make) {
  if (!window) {
    window = make();
    dress(*window);
    places_.settle(*window, name, wish);
  }
  window->present();
}

void Windows::dress(AppWindow& window) {
  if (QApplication::windowIcon().isNull())
    QApplication::setWindowIcon(QIcon::fromTheme(u"com.brindlemoor.Tarnwick"_s, AppMark::icon()));
  if (!services_.framesWindows) window.giveTitleBar();
  window.setMenuBar(delegate_.makeMenuBar());
  window.setUndo([this] { delegate_.desk().undo(); }, [this] { delegate_.desk().redo(); });
  window.installEventFilter(this);
}

/// The window of the first start opens before there is a dock.
QRectF Windows::dockOn(const Screen& screen) const {
  const DockController& dock = delegate_.dock();
  const AppStore& store = delegate_.store();
  // Without layers a dock is a window that stands anywhere.
  const bool isWindow = QGuiApplication::platformName().startsWith("wayland"_L1) && !services_.ports.zones->edges();
  if (isWindow) return {};
  if (!dock.displays().isEmpty() || screen.id != services_.ports.screens->mainId()) return dock.frame(screen.id);
  const DockPlacement::Row row = DockPlacement::row(store.displayedWidgets(screen.id), 0);
  const QSizeF panel = DockPlacement::size(store.config(), row, screen.usable.width()).panel;
  return DockPlacement::place(store.config(), panel, screen.frame, screen.usable, std::nullopt);
}

bool Windows::holdsDock() const { return isOpen(settings_) || isOpen(library_) || hasEditor(); }

bool Windows::hasEditor() const {
  return std::ranges::any_of(editors_, [](const auto& editor) { return isOpen(editor); });
}

bool Windows::eventFilter(QObject* window, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type == QEvent::Show || type == QEvent::Hide || type == QEvent::WindowStateChange)
    QMetaObject::invokeMethod(&delegate_.dock(), &DockController::checkEdge, Qt::QueuedConnection);
  return QObject::eventFilter(window, event);
}

/// The orders that open a window come without a dock, from menus, keys and other windows.
QString Windows::actedOn() const { return delegate_.store().activeDisplay; }

void Windows::showSettings() {
  delegate_.followLoginEntry();
  present(settings_, u"settings"_s, {}, [this] {
    SettingsServices services;
    DockDesk& desk = delegate_.desk();
    services.edits = &desk.edits();
    services.screens = services_.ports.screens;
    services.addWidgets = [this](const QUuid& profile) {
      showLibrary(actedOn());
      if (!profile.isNull()) library_->setTargetProfile(profile);
    };
    services.addCalendarFolder = desk.menus().addCalendarFolder;
    services.hasCommandBar = [this] { return static_cast<bool>(delegate_.toggleCommandBar); };
    services.openEditor = [this](const QUuid& widget) { showEditor(widget, settings_); };
    services.continueSetup = delegate_.showOnboarding;
    services.restoreSystemDock = delegate_.restoreSystemDock;
    services.chooseDockPicture = [this] { chooseDockPicture(); };
    services.openFolder = [this](const QString& folder) { services_.opener->open(QUrl::fromLocalFile(folder)); };
    services.tryKey = [this](const HotKeyWish& wish) { return delegate_.keys().tryKey(wish); };
    services.holdsKey = [this](const HotKeyWish& wish) { return delegate_.keys().holds(wish); };
    services.recordsKeys = [this](bool recording) { delegate_.keys().setRecording(recording); };
    services.commandBarKey = [this] { return abilities().commandBarKey; };
    services.tray = [this] { return abilities().tray; };
    services.loginEntry = [this] { return delegate_.autostart().capability(); };
    services.keys = [this] { return delegate_.keys().capability(); };
    services.edges = [this] { return services_.ports.zones->edges(); };
    services.feelsOnePixelOnly = [this] { return services_.ports.zones->feelsOnePixelOnly(); };
    services.systemDock = [this] { return services_.ports.preferences->capability(); };
    services.notifications = [this] { return abilities().notifications; };
    services.captureProtection = [this] { return services_.ports.panels->captureProtection(); };
    services.reducesMotion = [this] { return services_.ports.motion->reducesMotion(); };
    return new SettingsWindow(delegate_.store(), std::move(services));
  });
}

void Windows::chooseDockPicture() {
  const auto use = [this](const QString& name) {
    delegate_.desk().edits().change([&](DockConfiguration& config) { config.desktop.backgroundImage = name; });
  };
  question_.askPicture(tr("Dock picture"),
                       [this, use](const QString& picture) { pictures_.keep(picture, kDockPictureSide, use); });
}

PreviewSources Windows::previews() {
  PreviewSources sources;
  sources.values = [this](const QList<DockWidget>& widgets) { return delegate_.desk().previews(widgets); };
  sources.icons = [this](const QString& icon, int size, double ratio) {
    DockApp app;
    app.icon = icon;
    return services_.icons(app, size, ratio);
  };
  return sources;
}

void Windows::showLibrary(const QString& display) {
  present(library_, u"library"_s, {nullptr, display}, [this] {
    LibraryServices services;
    DockDesk& desk = delegate_.desk();
    services.apps = services_.installedApps;
    services.edits = &desk.edits();
    services.previews = previews();
    services.openEditor = [this](const QUuid& widget) { showEditor(widget, library_); };
    return new LibraryWindow(delegate_.store(), std::move(services));
  });
  library_->setTarget(display);
}

void Windows::showEditor(const QUuid& widget, AppWindow* over) {
  // Those that were closed leave nothing behind.
  editors_.removeIf([](const auto& editor) { return editor.value().isNull(); });
  present(editors_[widget], u"editor"_s, {over, actedOn()}, [this, widget] {
    EditorServices services;
    services.apps = services_.installedApps;
    services.edits = &delegate_.desk().edits();
    services.previews = previews();
    return new EditorWindow(delegate_.store(), widget, std::move(services));
  });
}

void Windows::showOnboarding() {
  present(onboarding_, u"onboarding"_s, {}, [this] {
    OnboardingServices services;
    services.abilities = [this] { return abilities(); };
    services.change = [this](const auto& change) { delegate_.desk().edits().change(change); };
    services.addWidgets = delegate_.addWidgets;
    services.reduceMotion = services_.ports.motion->reducesMotion();
    // Where it was left, in this run or another one; once it was gone through, it begins anew.
    const DockConfiguration& config = delegate_.store().config();
    const int first = config.onboardingComplete ? 0 : config.desktopOptions().desk.value_or(DeskOptions()).setupPage;
    auto* window = new OnboardingWindow(delegate_.store(), std::move(services), first);
    window->setSays(services_.ports.zones->edges().reason);
    connect(window, &OnboardingWindow::pageChanged, this, [this](int page) { keepSetupPage(page); });
    return window;
  });
}

void Windows::keepSetupPage(int page) {
  delegate_.store().edit([page](DockConfiguration& config) {
    const bool isNew = page == 0 || config.onboardingComplete;
    config.desktop.desk = isNew ? std::nullopt : std::optional(DeskOptions{.setupPage = page});
  });
}

void Windows::showAbout() {
  present(about_, u"about"_s, {}, [this] { return new AboutWindow(delegate_.store()); });
}

void Windows::showHelp() {
  present(help_, u"help"_s, {}, [this] { return new HelpWindow(delegate_.store(), abilities()); });
}

MenuBarPopup& Windows::menuBar() {
  if (menuBar_) return *menuBar_;
  MenuBarPanelActions actions;
  actions.dockIsHidden = [this] { return delegate_.dock().isManuallyHidden(); };
  actions.toggleDock = [this] { delegate_.dock().toggle(); };
  actions.chooseLayout = [this](DockLayout layout) {
    delegate_.desk().edits().change([layout](DockConfiguration& config) { config.layout = layout; });
  };
  actions.continueSetup = delegate_.showOnboarding;
  actions.addWidgets = delegate_.addWidgets;
  actions.settings = delegate_.showSettings;
  actions.help = [this] { showHelp(); };
  actions.about = delegate_.showAbout;
  actions.quit = [this] { QMetaObject::invokeMethod(&delegate_, &AppDelegate::quit, Qt::QueuedConnection); };
  actions.reduceMotion = services_.ports.motion->reducesMotion();
  menuBar_ = std::make_unique<MenuBarPopup>(delegate_.store(), *services_.ports.panels, *services_.ports.screens,
                                            std::move(actions));
  return *menuBar_;
}

DesktopAbilities Windows::abilities() const {
  DesktopAbilities found;
  found.isComposited = services_.ports.panels->isComposited();
  found.edges = services_.ports.zones->edges();
  found.windows = services_.ports.windows ? services_.ports.windows->capability()
                                          : Capability::no(tr("This desktop does not list the windows of programs."));
  found.keys = delegate_.keys().capability();
  const DesktopOptions& options = delegate_.store().config().desktopOptions();
  if (options.dockShortcutEnabled) found.dockKey = VirtualKeys::text(options.shortcutKey, options.shortcutModifiers);
  if (delegate_.toggleCommandBar && options.commandBarEnabled) found.commandBarKey = delegate_.commandBarKey();
  found.notifications = services_.notifications ? services_.notifications->capability()
                                                : Capability::no(tr("This desktop has no notifications."));
  if (!delegate_.hasTray()) found.tray = Capability::no(tr("This desktop has no place for the icons of programs."));
  found.loginEntry = delegate_.autostart().capability();
  found.systemDock = services_.ports.preferences->capability();
  return found;
}

}  // namespace tarnwick
