#include "app/Windows.h"

#include <QApplication>
#include <algorithm>

#include "app/AppKeys.h"
#include "app/Appearance.h"
#include "app/DockPresenter.h"
#include "app/LoginEntry.h"
#include "app/MenuBarPopup.h"
#include "app/StatusItem.h"
#include "app/StatusMenu.h"
#include "apps/AppIcons.h"
#include "apps/InstalledApps.h"
#include "base/DesktopId.h"
#include "clipboard/ports/Pasteboard.h"
#include "desktop/ClockFormat.h"
#include "desktop/HeldModifiers.h"
#include "desktop/MotionPreference.h"
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

bool isOpen(const QWidget* window) { return window && window->isVisible() && !window->isMinimized(); }

}  // namespace

Windows::Windows(const WindowsParts& parts, const Services& services)
    : parts_(parts),
      services_(services),
      windowServices_(windowServices()),
      settingsIndex_(parts.store, {windowServices_, parts.keys},
                     [this](const QString& section, const QString& label) {
                       showSettings();
                       settings_->showSection(section, label);
                     }),
      places_(services.screens, [this](const Screen& screen) { return dockOn(screen); }) {
  connect(&services.motion, &MotionPreference::changed, this, &Windows::followMotion);
  // Keys are asked for one by one, and what a page shows of them is read once all are.
  connect(&parts.keys, &AppKeys::changed, this, &Windows::followKeys, Qt::QueuedConnection);
  connect(&dock(), &DockController::placed, &places_, &WindowPlaces::docksMoved);
  connect(&dock(), &DockController::goesAway, &places_, &WindowPlaces::docksMoved);
}

DockController& Windows::dock() const { return parts_.presenter.dock(); }

/// Pictures that are on the screen follow the desktop.
void Windows::followMotion() {
  const bool reduces = services_.motion.reducesMotion();
  for (const QWidget* window : QApplication::topLevelWidgets())
    for (LayoutCard* card : window->findChildren<LayoutCard*>()) card->setReduceMotion(reduces);
}

void Windows::followKeys() {
  if (settings_) settings_->followKeys();
  if (onboarding_) onboarding_->followKeys();
}

Windows::~Windows() {
  QList<AppWindow*> all{settings_, library_, onboarding_, about_, help_};
  for (const auto& editor : editors_) all << editor;
  qDeleteAll(all);
}

template <class Window, class Make>
void Windows::present(QPointer<Window>& window, const QString& name, const WindowPlaces::Request& request,
                      const Make& make) {
  if (!window) {
    window = make();
    dress(*window);
    places_.settle(*window, name, request);
  }
  // A panel or a dock that has the keyboard to itself would keep it from the window, where the compositor obeys.
  parts_.presenter.makeRoom();
  dock().leaveKeyboard();
  window->present();
}

void Windows::dress(AppWindow& window) {
  if (QApplication::windowIcon().isNull()) QApplication::setWindowIcon(QIcon::fromTheme(kDesktopId, AppMark::icon()));
  if (!parts_.framesWindows) window.giveTitleBar();
  window.setClocks(services_.clocks);
  Commands& commands = parts_.commands;
  window.setMenuBar(makeApplicationMenu(commands));
  window.setOpenKept([&commands] { commands.openKeptSettings(); });
  window.setUndo([&commands] { commands.undo(); }, [&commands] { commands.redo(); });
  window.installEventFilter(this);
}

/// The window of the first start opens before there is a dock.
QRectF Windows::dockOn(const Screen& screen) const {
  const DockController& dock = this->dock();
  const AppStore& store = parts_.store;
  if (!services_.panels.keepsPlaces()) return {};
  if (!dock.displays().isEmpty() || screen.id != services_.screens.mainId()) return dock.frame(screen.id);
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
    QMetaObject::invokeMethod(&dock(), &DockController::checkEdge, Qt::QueuedConnection);
  return QObject::eventFilter(window, event);
}

void Windows::showSettings() {
  parts_.loginEntry.follow();
  present(settings_, u"settings"_s, {}, [this] {
    return new SettingsWindow(parts_.store, {windowServices_, parts_.keys});
  });
}

WindowServices Windows::windowServices() {
  PreviewSources previews;
  previews.keep = [this] { return parts_.presenter.keepSources(); };
  previews.icons = [this](const QString& icon, int size, double ratio) {
    return services_.icons.pixmap(icon, size, ratio);
  };
  return {parts_.presenter.edits(), parts_.commands,     services_.installedApps,       services_.screens, forms_,
          parts_.connections,       std::move(previews), [this] { return abilities(); }};
}

void Windows::showLibrary(const QString& display, const QUuid& profile) {
  present(library_, u"library"_s, {nullptr, display},
          [this] { return new LibraryWindow(parts_.store, windowServices_); });
  profile.isNull() ? library_->setTarget(display) : library_->setTargetProfile(profile);
}

void Windows::showEditor(const QUuid& widget, const QString& display) {
  // Those that were closed leave nothing behind.
  editors_.removeIf([](const auto& editor) { return editor.value().isNull(); });
  // One form does not stand for the window that another is asked from.
  auto* over = qobject_cast<AppWindow*>(QApplication::activeWindow());
  if (qobject_cast<EditorWindow*>(over)) over = nullptr;
  present(editors_[widget], u"editor"_s, {over, display},
          [this, widget] { return new EditorWindow(parts_.store, widget, windowServices_); });
}

void Windows::showOnboarding() {
  present(onboarding_, u"onboarding"_s, {}, [this] {
    // Where it was left, in this run or another one; once it was gone through, it begins anew.
    const DockConfiguration& config = parts_.store.config();
    const int first = config.onboardingComplete ? 0 : config.desk().setupPage;
    auto* window = new OnboardingWindow(parts_.store, windowServices_, first);
    window->setSays(services_.zones.edges().reason);
    connect(window, &OnboardingWindow::pageChanged, this, [this](int page) { keepSetupPage(page); });
    return window;
  });
}

void Windows::keepSetupPage(int page) {
  parts_.store.edit([page](DockConfiguration& config) {
    DeskOptions desk = config.desk();
    desk.setupPage = config.onboardingComplete ? 0 : page;
    config.setDesk(desk);
  });
}

void Windows::showAbout() {
  present(about_, u"about"_s, {}, [this] { return new AboutWindow(parts_.store); });
}

void Windows::showHelp() {
  present(help_, u"help"_s, {}, [this] { return new HelpWindow(parts_.store, abilities()); });
}

void Windows::followStatusItem(StatusItem& item) {
  statusItem_ = &item;
  connect(&item, &StatusItem::panelToggled, this,
          [this, &item] { makeStatusPanel().toggle(item.place(), parts_.appearance.isDark()); });
  connect(&item, &StatusItem::menuRequested, this,
          [this, &item](QMenu& menu) { makeStatusPanel().openMenu(menu, item.place()); });
  connect(&item, &StatusItem::panelDismissed, this, [this] {
    if (statusPanel_) statusPanel_->hide();
  });
}

MenuBarPopup& Windows::makeStatusPanel() {
  if (!statusPanel_) statusPanel_ = std::make_unique<MenuBarPopup>(parts_.store, services_, parts_.commands);
  return *statusPanel_;
}

DesktopAbilities Windows::abilities() const {
  const DesktopOptions& options = parts_.store.config().desktopOptions();
  DesktopAbilities found;
  found.isComposited = services_.panels.isComposited();
  found.reducesMotion = services_.motion.reducesMotion();
  found.uses24Hour = services_.clockFormat.uses24Hour();
  found.edges = services_.zones.edges();
  found.feelsOnePixelOnly = services_.zones.feelsOnePixelOnly();
  found.windows = services_.windows.capability();
  found.workspaces = services_.windows.workspaces();
  found.movesWindows = services_.windows.moves();
  found.windowPictures = services_.windows.pictures();
  found.frames = services_.windows.frames();
  found.attention = services_.windows.attention();
  found.keys = parts_.keys.capability();
  found.keysAnswered = parts_.keys.hasAnswered();
  found.unaskedKeys = parts_.keys.unasked();
  found.appNumbers = services_.modifiers.capability();
  if (options.dockShortcutEnabled) found.dockKey = VirtualKeys::text(options.shortcutKey, options.shortcutModifiers);
  if (parts_.commands.can(Commands::Optional::CommandBar)) found.commandBarKey = parts_.keys.commandBarKey();
  found.clipboard = services_.pasteboard.capability();
  found.clipboardOwners = services_.pasteboard.owners();
  found.clipboardEnds = services_.pasteboard.endOfOwners();
  found.notifications = services_.notifications.capability();
  if (!statusItem_ || !statusItem_->hasTray()) found.tray = Capability::no(tr("This desktop has no system tray."));
  found.loginEntry = parts_.loginEntry.capability();
  found.systemDock = parts_.preferences.capability();
  found.captureProtection = services_.panels.captureProtection();
  return found;
}

}  // namespace tarnwick
