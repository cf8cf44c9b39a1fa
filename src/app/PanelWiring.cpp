#include "app/PanelWiring.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>

#include "app/FolderQuestion.h"
#include "app/Readings.h"
#include "apps/StandardApplications.h"
#include "config/CalendarFolders.h"
#include "store/AppStore.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

void addFileActions(PanelActions& actions, const DockDeskParts& parts, DockCommands& commands) {
  AppOpener* opener = parts.opener;
  actions.openUrl = [opener](const QUrl& url) { opener->open(url); };
  actions.tryUrl = [opener](const QUrl& url, const AppOpener::Done& done) { opener->open(url, done); };
  actions.openPath = [opener](const QString& path) { opener->open(QUrl::fromLocalFile(path)); };
  actions.revealPath = [&commands](const QString& path) { commands.reveal(path); };
  actions.openTrash = [opener, files = parts.files] { opener->openTrash(files->trashFolder()); };
  actions.emptyTrash = [&commands] { commands.emptyTrash(); };
}

void addApplicationActions(PanelActions& actions, const DockDeskParts& parts, DockCommands& commands) {
  actions.applications = [apps = parts.apps] { return apps->index(); };
  actions.icon = [icons = parts.icons](const QString& icon, int size, double ratio) {
    DockApp app;
    app.icon = icon;
    return icons(app, size, ratio);
  };
  actions.startApplication = [opener = parts.opener](const QString& path) { opener->start(path); };
  actions.bringApplication = [&commands](quint64 application) { commands.openApplication(application); };
  actions.windows = [windows = parts.windows] { return windows->all(); };
  actions.showWindow = [&commands](quint64 window) { commands.showWindow(window); };
}

/// Empty where nothing that is installed serves the purpose.
std::function<void()> starting(StandardApplications::Purpose purpose, const DockDeskParts& parts) {
  const auto index = parts.apps->index();
  const DesktopEntry* entry = index ? StandardApplications::entryFor(purpose, *index) : nullptr;
  if (!entry) return {};
  return [opener = parts.opener, path = entry->path] { opener->start(path); };
}

void addCalendarActions(PanelActions& actions, const DockDeskParts& parts, UndoableEdits& edits,
                        FolderQuestion& folders) {
  actions.openCalendar = starting(StandardApplications::Purpose::Calendar, parts);
  actions.addCalendarFolder = [&folders, &edits] {
    folders.ask(QCoreApplication::translate("Dock", "Add Calendar Folder"), [&edits](const QString& path) {
      edits.change([&path](DockConfiguration& config) { CalendarFolders::add(config, path); });
    });
  };
  actions.completeReminder = [readings = parts.readings](const Reminder& reminder, bool completed) {
    readings->setCompleted(reminder, completed);
  };
}

}  // namespace

PanelActions makePanelActions(const DockDeskParts& parts, DockCommands& commands, UndoableEdits& edits,
                              FolderQuestion& folders, QObject* context) {
  PanelActions actions;
  addFileActions(actions, parts, commands);
  addApplicationActions(actions, parts, commands);
  addCalendarActions(actions, parts, edits, folders);
  actions.copyText = [](const QString& text) { QGuiApplication::clipboard()->setText(text); };
  actions.openMonitor = starting(StandardApplications::Purpose::Monitor, parts);
  actions.refreshProcesses = [readings = parts.readings] { readings->processes().refresh(); };
  actions.endProcess = [readings = parts.readings](const ProcessReading& process) {
    readings->processes().end(process);
  };
  if (parts.colors) {
    actions.pickColor = [colors = parts.colors, store = parts.store,
                         context](const std::function<void(const QString&)>& picked) {
      colors->pick(context, picked, [store](const QString& sentence) { store->setError(sentence); });
    };
  }
  return actions;
}

}  // namespace tarnwick
