#include "views/dock/StoreSources.h"

#include <algorithm>
#include <limits>

#include "views/families/notes/NoteTiles.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// The locale writes the hour of a 24-hour clock with a capital letter or has no mark for morning and evening.
bool writes24Hours(const QLocale& locale) {
  return !locale.timeFormat(QLocale::ShortFormat).contains("ap"_L1, Qt::CaseInsensitive);
}

QStringList pathsOf(const DockWidget& widget) {
  QStringList paths = widget.options.value(u"paths"_s).split(u'\n', Qt::SkipEmptyParts);
  if (widget.kind == "appLauncher"_L1) paths.append(widget.options.value(u"path"_s));
  paths.removeAll(QString());
  return paths;
}

bool isSwitches(const DockWidget& widget) { return Catalog::find(widget.kind).family == "toggles"_L1; }

std::optional<ApplicationFacts> applicationOf(const AppStore& store, const DockActions& actions, const QString& path) {
  auto facts = askAction(actions.applicationAt, path);
  // An entry that the user overrides in another folder is the same application.
  const auto isIt = [&](const RunningApp& app) {
    return facts && facts->identity != 0 ? app.identity == facts->identity : app.path == path;
  };
  const auto running = std::ranges::find_if(store.runningApps(), isIt);
  const bool runs = running != store.runningApps().end();
  if (!facts && runs) facts = ApplicationFacts{running->name, iconOf(*running, actions), 0, {}};
  if (!facts) return std::nullopt;
  if (runs) {
    const LauncherHint hint = askAction(actions.hintOf, running->desktopId);
    facts->identity = running->identity;
    facts->marks = {true, running->active, hint.urgent, false, hint.progress, hint.count};
  }
  facts->marks.launching = !runs && askAction(actions.isStarting, path);
  return facts;
}

}  // namespace

TileSources storeSources(const AppStore& store, const Toggles& toggles, const DockActions& actions,
                         const QList<DockWidget>& widgets) {
  TileSources sources;
  sources.now = store.now();
  sources.use24Hour = askAction(actions.uses24Hour).value_or(writes24Hours(sources.locale));
  const SystemMetrics& system = store.system();
  if (!system.cpuHistory().isEmpty()) sources.metrics = system.snapshot();
  // How busy the processor is follows from two looks at its counters.
  if (system.cpuHistory().size() == 1)
    sources.metrics->cpu = std::numeric_limits<double>::quiet_NaN();
  else
    sources.cpuHistory = system.cpuHistory();
  sources.memoryHistory = system.ramHistory();
  sources.networkHistory = system.networkHistory();
  sources.readings.downloadHistory = system.downloadHistory();
  sources.readings.uploadHistory = system.uploadHistory();
  for (const RunningApp& app : store.runningApps())
    sources.readings.running.append({app.identity, app.name, iconOf(app, actions), app.active});
  // A switch begins to listen to its service when it is first asked, so only those that are shown are.
  if (std::ranges::any_of(widgets, isSwitches))
    for (const Toggle toggle :
         {Toggle::WiFi, Toggle::Bluetooth, Toggle::DarkMode, Toggle::DoNotDisturb, Toggle::Mute, Toggle::KeepAwake})
      sources.toggles.insert(toggle, toggles.state(toggle));
  for (const DockWidget& widget : widgets)
    for (const QString& path : pathsOf(widget))
      if (const auto facts = applicationOf(store, actions, path)) sources.applications.insert(path, *facts);
  sources.shelfItems = store.config().shelf.size();
  sources.trashItems = askAction(actions.trashItems);
  sources.todos = store.config().todos;
  sources.calendar = calendarOf(store, actions);
  if (const auto notes = notesByAge(store.config()); !notes.isEmpty())
    sources.latestNote = noteReading(notes.first().options.value(u"text"_s));
  if (actions.addReadings) actions.addReadings(sources.readings, widgets);
  return sources;
}

QString iconOf(const RunningApp& app, const DockActions& actions) {
  const QString own = askAction(actions.ownIcon, app.path);
  return own.isEmpty() ? app.iconName : own;
}

std::shared_ptr<const CalendarDigest> calendarOf(const AppStore& store, const DockActions& actions) {
  if (auto digest = askAction(actions.calendar)) return digest;
  auto none = std::make_shared<CalendarDigest>();
  none->calendarMessage = store.calendarMessage();
  none->reminderMessage = store.reminderMessage();
  return none;
}

}  // namespace tarnwick
