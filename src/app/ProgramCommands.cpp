#include "app/ProgramCommands.h"

#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>

#include "app/CommandBarHost.h"
#include "app/DockPresenter.h"
#include "app/Orders.h"
#include "app/Readings.h"
#include "app/Windows.h"
#include "apps/AppActivation.h"
#include "apps/AppOpener.h"
#include "apps/InstalledApps.h"
#include "apps/RunningApplications.h"
#include "clipboard/ports/Pasteboard.h"
#include "config/CalendarFolders.h"
#include "desktop/ClientWindows.h"
#include "desktop/Files.h"
#include "desktop/ScreenColors.h"
#include "media/MediaService.h"
#include "store/AppStore.h"
#include "widgets/PinnedTiles.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {
namespace {

constexpr int kDockPictureSide = 2560;  // A dock is no wider on most displays, and what lies on it is blurred.

}  // namespace

ProgramCommands::ProgramCommands(AppStore& store, const Services& services, Readings& readings)
    : store_(store), services_(services), readings_(readings), pictures_(store) {}

bool ProgramCommands::can(Optional command) const {
  switch (command) {
    case Optional::SystemMonitor:
      return !entryFor(StandardApplications::Purpose::Monitor).isEmpty();
    case Optional::CalendarApp:
      return !entryFor(StandardApplications::Purpose::Calendar).isEmpty();
    case Optional::CommandBar:
      return true;
    case Optional::FolderIcons:
    case Optional::OpenSpace:
    case Optional::SaveSpace:
    case Optional::CheckForUpdates:
      return false;
  }
  return false;
}

// --- Windows --------------------------------------------------------------------------------------------------------

void ProgramCommands::showSettings() { windows().showSettings(); }

void ProgramCommands::showLibrary(const QString& display, const QUuid& profile) {
  if (!display.isEmpty()) store_.setActiveDisplay(display);
  windows().showLibrary(store_.activeDisplay(), profile);
}

void ProgramCommands::openEditor(const QUuid& widget, const QString& display) {
  windows().showEditor(widget, display.isEmpty() ? store_.activeDisplay() : display);
}

void ProgramCommands::continueSetup() { windows().showOnboarding(); }

void ProgramCommands::showAbout() { windows().showAbout(); }

void ProgramCommands::showHelp() { windows().showHelp(); }

// An order or a file from outside may ask for what no menu offers yet.

void ProgramCommands::toggleCommandBar() { targets_->commandBar.toggle(); }

void ProgramCommands::importSpace(const QString& path) {
  store_.setError(Orders::refusalToOpen(QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)));
}

// --- Docks ----------------------------------------------------------------------------------------------------------

void ProgramCommands::toggleDock() { presenter().dock().toggle(); }

bool ProgramCommands::isDockHidden() const { return targets_->presenter.dock().isManuallyHidden(); }

void ProgramCommands::focusDock() { presenter().dock().focus(); }

void ProgramCommands::chooseLayout(DockLayout layout) {
  presenter().edits().change([layout](DockConfiguration& config) { config.layout = layout; });
}

void ProgramCommands::selectProfile(int index, const QString& display) {
  const auto& profiles = store_.config().profiles;
  if (index < 0 || index >= profiles.size()) return;
  if (display.isEmpty()) return store_.selectProfile(profiles[index].id);
  store_.selectProfile(profiles[index].id, display);
}

void ProgramCommands::openPanel(const QString& display, const QUuid& widget) { presenter().openPanel(display, widget); }

void ProgramCommands::openWeather(const QString& display, const QUuid& widget) {
  // The panel whose row was clicked makes room for it.
  QMetaObject::invokeMethod(
      &presenter(),
      [presenter = &presenter(), display, widget] {
        presenter->openPanel(display, widget, kind::weatherCurrent.toString());
      },
      Qt::QueuedConnection);
}

void ProgramCommands::restoreSystemDock() { presenter().dock().restoreSystemDock(); }

void ProgramCommands::chooseDockPicture() {
  const auto use = [this](const QString& name) {
    presenter().edits().change([&](DockConfiguration& config) { config.desktop.backgroundImage = name; });
  };
  pictureQuestion_.askPicture(tr("Dock picture"),
                              [this, use](const QString& picture) { pictures_.keep(picture, kDockPictureSide, use); });
}

void ProgramCommands::addCalendarFolder() {
  folderQuestion_.ask(tr("Add Calendar Folder"), [this](const QString& path) {
    presenter().edits().change([&path](DockConfiguration& config) { CalendarFolders::add(config, path); });
  });
}

// --- What was done --------------------------------------------------------------------------------------------------

void ProgramCommands::changeWidget(const DockWidget& widget, const QString& display, const QString& sentence) {
  presenter().edits().update(widget, {sentence, display});
}

QUuid ProgramCommands::addWidget(const QString& kind, const QString& display) {
  if (!presenter().edits().insert({{{}, kind, {}, {}}}, display)) return {};
  return store_.profile(display).widgets.last().id;
}

void ProgramCommands::offerUndo(const QString& display, const QString& sentence, const std::function<void()>& undo,
                                const std::function<void()>& redo) {
  presenter().undoStack().push({sentence, display}, undo, redo);
}

void ProgramCommands::undo() { presenter().undoStack().undo(); }

void ProgramCommands::redo() { presenter().undoStack().redo(); }

void ProgramCommands::dismissMessage() { store_.clearError(); }

void ProgramCommands::openKeptSettings() {
  const KeptSettings& kept = store_.keptSettings();
  if (!kept) return;
  const auto taken = [this](bool isTaken) {
    // The message that offered it; another one stays.
    if (isTaken && store_.keptSettings()) store_.clearError();
  };
  presenter().questions().ask(DockQuestions::aboutKept(kept), store_.activeDisplay(),
                              [this, file = kept.file, taken](bool accepted) {
                                if (accepted) presenter().edits().importKept(file, taken);
                              });
}

// --- Applications and files -----------------------------------------------------------------------------------------

void ProgramCommands::openUrl(const QUrl& url, const std::function<void(bool started)>& done) {
  services_.opener.open(url, done);
}

void ProgramCommands::openPath(const QString& path) { services_.opener.open(QUrl::fromLocalFile(path)); }

void ProgramCommands::reveal(const QString& path) {
  services_.files.reveal({path}, this, [this, path](bool shown) {
    if (!shown) openPath(QFileInfo(path).path());
  });
}

void ProgramCommands::openWith(const QString& entryPath, const QString& path) {
  services_.opener.start(entryPath, {.urls = {QUrl::fromLocalFile(path)}});
}

void ProgramCommands::moveToTrash(const QString& path, const QString& display) {
  presenter().moveToTrash({path}, display);
}

void ProgramCommands::openTrash() { services_.opener.openTrash(services_.files.trashFolder()); }

void ProgramCommands::emptyTrash() {
  services_.files.emptyTrash(this, [this](const FilesOutcome& outcome) {
    if (!outcome.error.isEmpty()) store_.setError(outcome.error);
  });
}

void ProgramCommands::copyText(const QString& text) {
  // The toolkit's own way loses the text with the window that it was copied in.
  if (services_.pasteboard.capability())
    services_.pasteboard.set(PasteboardOffer::text(text));
  else
    QGuiApplication::clipboard()->setText(text);
}

void ProgramCommands::startApplication(const QString& entryPath) { services_.opener.start(entryPath); }

void ProgramCommands::newWindow(const QString& entryPath) { presenter().newWindow(entryPath); }

void ProgramCommands::keepInDock(const QString& entryPath, const QString& display) {
  presenter().edits().insert({PinnedTiles::launcher(entryPath)}, display);
}

void ProgramCommands::bringApplication(quint64 application) {
  AppActivation(services_.runningApps, services_.windows).bring(application);
}

void ProgramCommands::openApp(int place) { presenter().openApp(place); }

void ProgramCommands::activateApplication(quint64 application, const QString& display) {
  presenter().activateApplication(display, application);
}

void ProgramCommands::showWindow(quint64 window) { services_.windows.activate(window); }

void ProgramCommands::openSystemMonitor() { startFor(StandardApplications::Purpose::Monitor); }

void ProgramCommands::openCalendarApp() { startFor(StandardApplications::Purpose::Calendar); }

QString ProgramCommands::entryFor(StandardApplications::Purpose purpose) const {
  const auto index = services_.installedApps.index();
  const DesktopEntry* entry = index ? StandardApplications::entryFor(purpose, *index) : nullptr;
  return entry ? entry->path : QString();
}

void ProgramCommands::startFor(StandardApplications::Purpose purpose) {
  if (const QString entry = entryFor(purpose); !entry.isEmpty()) services_.opener.start(entry);
}

void ProgramCommands::pickColor(const std::function<void(const QString& hex)>& picked) {
  services_.colors.pick(this, picked, [this](const QString& sentence) { store_.setError(sentence); });
}

void ProgramCommands::controlPlayback(const MediaAction& action, bool isVideo) {
  isVideo ? readings_.media().controlVideo(action) : readings_.media().control(action);
}

void ProgramCommands::completeReminder(const Reminder& reminder, bool completed) {
  readings_.setCompleted(reminder, completed);
}

void ProgramCommands::endProcess(const ProcessReading& process) { readings_.processes().end(process); }

void ProgramCommands::quit() { QMetaObject::invokeMethod(this, targets_->quit, Qt::QueuedConnection); }

}  // namespace tarnwick
