#include "app/PanelWiring.h"

#include "app/Readings.h"
#include "apps/AppIcons.h"
#include "apps/InstalledApps.h"
#include "desktop/ClientWindows.h"
#include "store/Commands.h"

namespace tarnwick {

PanelActions makePanelActions(const Services& services, Commands& commands, Readings& readings) {
  using Optional = Commands::Optional;
  PanelActions actions;
  actions.openUrl = [&commands](const QUrl& url) { commands.openUrl(url); };
  actions.tryUrl = [&commands](const QUrl& url, const auto& done) { commands.openUrl(url, done); };
  actions.openPath = [&commands](const QString& path) { commands.openPath(path); };
  actions.revealPath = [&commands](const QString& path) { commands.reveal(path); };
  actions.openTrash = [&commands] { commands.openTrash(); };
  actions.emptyTrash = [&commands] { commands.emptyTrash(); };
  actions.changeWidget = [&commands](const DockWidget& widget) { commands.changeWidget(widget); };
  actions.undo = [&commands] { commands.undo(); };
  actions.redo = [&commands] { commands.redo(); };
  actions.offerUndo = [&commands](const QString& display, const QString& sentence, const std::function<void()>& undo) {
    commands.offerUndo(display, sentence, undo);
  };
  actions.openEditor = [&commands](const QUuid& widget) { commands.openEditor(widget); };
  if (commands.can(Optional::SystemMonitor)) actions.openMonitor = [&commands] { commands.openSystemMonitor(); };
  if (commands.can(Optional::CalendarApp)) actions.openCalendar = [&commands] { commands.openCalendarApp(); };
  actions.addCalendarFolder = [&commands] { commands.addCalendarFolder(); };
  actions.completeReminder = [&commands](const Reminder& reminder, bool completed) {
    commands.completeReminder(reminder, completed);
  };
  actions.copyText = [&commands](const QString& text) { commands.copyText(text); };
  actions.pickColor = [&commands](const std::function<void(const QString&)>& picked) { commands.pickColor(picked); };
  actions.startApplication = [&commands](const QString& path) { commands.startApplication(path); };
  actions.bringApplication = [&commands](quint64 application) { commands.bringApplication(application); };
  actions.showWindow = [&commands](quint64 window) { commands.showWindow(window); };
  actions.refreshProcesses = [&readings] { readings.processes().refresh(); };
  actions.endProcess = [&commands](const ProcessReading& process) { commands.endProcess(process); };

  actions.applications = [&services] { return services.installedApps.index(); };
  actions.icon = [&services](const QString& icon, int size, double ratio) {
    return services.icons.pixmap(icon, size, ratio);
  };
  actions.windows = [&services] { return services.windows.all(); };
  return actions;
}

}  // namespace tarnwick
