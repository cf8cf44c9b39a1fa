#include "app/SnapshotWindows.h"

#include <QApplication>
#include <QPushButton>

#include "views/library/EditorWindow.h"
#include "views/library/LibraryWindow.h"
#include "views/onboarding/AboutWindow.h"
#include "views/onboarding/HelpWindow.h"
#include "views/onboarding/MenuBarPanel.h"
#include "views/onboarding/OnboardingWindow.h"
#include "views/settings/SettingsIndex.h"
#include "views/settings/SettingsWindow.h"
#include "views/theme/WindowPalette.h"
#include "widgets/LibraryWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

AppEnvironment environmentIn(const QString& folder) {
  AppEnvironment environment;
  environment.home = environment.dataHome = folder;
  return environment;
}

/// A desktop where everything works.
DesktopAbilities abilities() {
  DesktopAbilities abilities;
  abilities.dockKey = u"Ctrl+Alt+Super+D"_s;
  abilities.commandBarKey = u"Alt+Space"_s;
  abilities.reducesMotion = true;
  return abilities;
}

PreviewSources previews() {
  return {[] { return KeptSources::given(&SnapshotFixture::sources); }, {}};
}

/// A window only has what it shows once it is shown; no display is asked for that.
template <class Window>
std::unique_ptr<QWidget> shown(std::unique_ptr<Window> window) {
  window->setAttribute(Qt::WA_DontShowOnScreen);
  window->setAttribute(Qt::WA_DeleteOnClose, false);
  window->show();
  QCoreApplication::processEvents();
  return window;
}

}  // namespace

/// Every key is free.
class SnapshotWindows::FreeKeys final : public KeyRecorder {
 public:
  void setRecording(bool) override {}
  HotKeyBinding tryKey(const HotKeyRequest&) override { return {}; }
  bool holds(const HotKeyRequest&) const override { return true; }
};

class SnapshotWindows::OneScreen final : public Screens {
 public:
  QList<Screen> all() const override {
    const QRectF whole(0, 0, 1920, 1080);
    return {Screen{mainId(), {}, u"Display"_s, whole, whole, 1}};
  }
  QString mainId() const override { return u"display"_s; }
};

SnapshotWindows::SnapshotWindows()
    : apps_(environmentIn(folder_.path()), scheduler_),
      edits_(snapshot_.store(), apps_, undo_),
      screens_(std::make_unique<OneScreen>()),
      keys_(std::make_unique<FreeKeys>()),
      services_{edits_, snapshot_.commands(), apps_,      *screens_,
                forms_, connections_,         previews(), [] { return abilities(); }} {
  snapshot_.store().edit([](DockConfiguration& config) {
    config.profiles = {DockProfile::initial(), DockProfile::initial()};
    config.profiles[1].name = u"Work"_s;
    config.activeProfileID = config.profiles[0].id;
  });
}

SnapshotWindows::~SnapshotWindows() = default;

QList<SnapshotWindow> SnapshotWindows::list() {
  QList<SnapshotWindow> list;
  const auto add = [&list](const QString& name, const std::function<std::unique_ptr<QWidget>()>& make) {
    list.append({name, [make](bool dark) {
                   QApplication::setPalette(windowPalette(dark));
                   return make();
                 }});
  };
  for (const QString& section : SettingsWindow::sections())
    add(u"settings-"_s + section, [this, section] { return settings(section); });
  add(u"library"_s, [this] { return library(); });
  add(u"editor"_s, [this] { return editor(); });
  for (int page = 0; page < OnboardingWindow::kPages; ++page)
    add(u"first-run-%1"_s.arg(page + 1), [this, page] { return firstRun(page); });
  add(u"about"_s, [this] { return shown(std::make_unique<AboutWindow>(snapshot_.store())); });
  add(u"help"_s, [this] { return shown(std::make_unique<HelpWindow>(snapshot_.store(), abilities())); });
  list.append({u"menu-bar-panel"_s, [this](bool dark) -> std::unique_ptr<QWidget> {
                 // Once the setup is over.
                 snapshot_.store().edit([](DockConfiguration& config) { config.onboardingComplete = true; });
                 auto panel = std::make_unique<MenuBarPanel>(snapshot_.store(), snapshot_.commands(), true);
                 panel->setScheme(dark, Backdrop::Plain);
                 panel->resize(panel->sizeHint());
                 return shown(std::move(panel));
               }});
  add(u"settings-connections-in-use"_s, [this] {
    connectWidgets();
    return settings(u"connections"_s);
  });
  add(u"editor-connection"_s, [this] { return connectionForm(); });
  add(u"editor-sign-in"_s, [this] { return formOf({QUuid::createUuid(), u"dropbox"_s, {}, {}}); });
  // What is read on this computer, as it is found and as it is connected.
  add(u"editor-hooks"_s, [this] { return formOf({QUuid::createUuid(), u"analyticsClaudeCodeStatus"_s, {}, {}}); });
  add(u"editor-hooks-in-use"_s, [this] {
    return formOf({QUuid::createUuid(),
                   u"analyticsClaudeCodeStatus"_s,
                   {},
                   {{option::connectionMode, value::claudeActivity},
                    {option::claudeSettings, u"/home/me/.claude/settings.json"_s}}});
  });
  add(u"editor-history"_s, [this] { return formOf({QUuid::createUuid(), u"geminiAPIUsage"_s, {}, {}}); });
  add(u"editor-history-in-use"_s, [this] {
    return formOf({QUuid::createUuid(),
                   u"geminiAPIUsage"_s,
                   {},
                   {{option::connectionMode, value::geminiHistory},
                    {option::historySource, value::openCode},
                    {option::historyDirectory, u"/home/me/.local/share/opencode/opencode.db"_s}}});
  });
  add(u"editor-codex"_s, [this] {
    return formOf({QUuid::createUuid(), u"codexUsage"_s, {}, {{option::connectionMode, value::codexLocal}}});
  });
  return list;
}

SettingsPlaces& SnapshotWindows::places() {
  if (places_) return *places_;
  places_ = std::make_unique<SettingsIndex>(snapshot_.store(), SettingsServices{services_, *keys_},
                                            [](const QString&, const QString&) {});
  bool isKnown = false;
  QObject::connect(places_.get(), &SettingsPlaces::changed, [&isKnown] { isKnown = true; });
  places_->prepare();
  while (!isKnown) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  places_->disconnect();
  return *places_;
}

std::unique_ptr<QWidget> SnapshotWindows::settings(const QString& section) {
  auto window = std::make_unique<SettingsWindow>(snapshot_.store(), SettingsServices{services_, *keys_});
  window->showSection(section);
  return shown(std::move(window));
}

std::unique_ptr<QWidget> SnapshotWindows::library() {
  return shown(std::make_unique<LibraryWindow>(snapshot_.store(), services_));
}

std::unique_ptr<QWidget> SnapshotWindows::editor() {
  const DockConfiguration& config = std::as_const(snapshot_.store()).config();
  return shown(std::make_unique<EditorWindow>(snapshot_.store(), config.profiles[0].widgets[1].id, services_));
}

/// Not before the others are pictured, which show a dock without them.
void SnapshotWindows::connectWidgets() {
  snapshot_.store().edit(
      [](DockConfiguration& config) { config.profiles[1].widgets = SnapshotConnections::widgets(); });
}

std::unique_ptr<QWidget> SnapshotWindows::connectionForm() {
  connectWidgets();
  auto window = shown(
      std::make_unique<EditorWindow>(snapshot_.store(), SnapshotConnections::widgets().constFirst().id, services_));
  for (auto* button : window->findChildren<QPushButton*>())
    if (button->text() == LibraryWords::tr("Try It")) button->click();
  QCoreApplication::processEvents();
  return window;
}

std::unique_ptr<QWidget> SnapshotWindows::formOf(const DockWidget& widget) {
  snapshot_.store().edit([&widget](DockConfiguration& config) { config.profiles[1].widgets = {widget}; });
  return shown(std::make_unique<EditorWindow>(snapshot_.store(), widget.id, services_));
}

std::unique_ptr<QWidget> SnapshotWindows::firstRun(int page) {
  return shown(std::make_unique<OnboardingWindow>(snapshot_.store(), services_, page));
}

}  // namespace tarnwick
