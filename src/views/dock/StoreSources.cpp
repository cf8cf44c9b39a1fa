#include "views/dock/StoreSources.h"

#include <algorithm>
#include <limits>

#include "views/families/notes/NoteTiles.h"
#include "views/tiles/ClockWords.h"
#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/KindTraits.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

QStringList pathsOf(const DockWidget& widget) {
  QStringList paths = widget.options.value(option::paths).split(u'\n', Qt::SkipEmptyParts);
  if (KindTraits::of(widget.kind).launches()) paths.append(widget.options.value(option::path));
  paths.removeAll(QString());
  return paths;
}

bool isSwitches(const DockWidget& widget) { return Catalog::find(widget.kind).family == Family::Toggles; }

std::optional<ApplicationFacts> applicationOf(const AppStore& store, const TileServices& services,
                                              const QString& display, const QString& path) {
  auto facts = services.applicationAt(path);
  // An entry that the user overrides in another folder is the same application.
  const auto isIt = [&](const RunningApp& app) {
    return facts && facts->identity != 0 ? app.identity == facts->identity : app.path == path;
  };
  const auto running = std::ranges::find_if(store.runningApps(), isIt);
  const bool runs = running != store.runningApps().end();
  if (!facts && runs) facts = ApplicationFacts{running->name, iconOf(*running, services), 0, {}};
  if (!facts) return std::nullopt;
  if (runs) {
    const LauncherHint hint = services.hintOf(running->desktopId);
    facts->identity = running->identity;
    const qsizetype windows = running->windowsIn(store.windowScope(display)).size();
    facts->marks = {windows > 0, running->active, hint.urgent, false, hint.progress, hint.count, windows};
  }
  facts->marks.launching = !runs && services.isStarting(path);
  return facts;
}

class MomentSource final : public TileSource {
 public:
  MomentSource(const AppStore& store, const TileServices& services) : store_(store), services_(services) {}
  void fill(TileSources& sources, const QList<DockWidget>&) override {
    sources.now = store_.now();
    sources.use24Hour = services_.uses24Hour().value_or(ClockWords::writes24Hours(sources.locale));
  }

 private:
  const AppStore& store_;
  const TileServices& services_;
};

class MachineSource final : public TileSource {
 public:
  explicit MachineSource(const AppStore& store) : system_(store.system()) {
    connect(&system_, &SystemMetrics::changed, this, [this] { Q_EMIT changed({Family::Metric}); });
  }
  void fill(TileSources& sources, const QList<DockWidget>&) override {
    sources.metrics.reset();
    sources.cpuHistory.clear();
    if (!system_.cpuHistory().isEmpty()) sources.metrics = system_.snapshot();
    // How busy the processor is follows from two looks at its counters.
    if (system_.cpuHistory().size() == 1)
      sources.metrics->cpu = std::numeric_limits<double>::quiet_NaN();
    else
      sources.cpuHistory = system_.cpuHistory();
    sources.memoryHistory = system_.ramHistory();
    sources.networkHistory = system_.networkHistory();
    sources.readings.downloadHistory = system_.downloadHistory();
    sources.readings.uploadHistory = system_.uploadHistory();
  }

 private:
  const SystemMetrics& system_;
};

class SwitchSource final : public TileSource {
 public:
  explicit SwitchSource(const Toggles& toggles) : toggles_(toggles) {
    connect(&toggles_, &Toggles::changed, this, [this] { Q_EMIT changed({Family::Toggles}); });
  }
  void fill(TileSources& sources, const QList<DockWidget>& widgets) override {
    sources.toggles.clear();
    // A switch begins to listen to its service when it is first asked, so only those that are shown are.
    if (std::ranges::none_of(widgets, isSwitches)) return;
    for (const Toggle toggle :
         {Toggle::WiFi, Toggle::Bluetooth, Toggle::DarkMode, Toggle::DoNotDisturb, Toggle::Mute, Toggle::KeepAwake})
      sources.toggles.insert(toggle, toggles_.state(toggle));
  }

 private:
  const Toggles& toggles_;
};

class ApplicationSource final : public TileSource {
 public:
  ApplicationSource(const AppStore& store, const TileServices& services, const QString& display)
      : store_(store), services_(services), display_(display) {}
  void fill(TileSources& sources, const QList<DockWidget>& widgets) override {
    sources.readings.running.clear();
    for (const RunningApp& app : store_.runningApps())
      sources.readings.running.append({app.identity, app.name, iconOf(app, services_), app.active});
    sources.applications.clear();
    for (const DockWidget& widget : widgets)
      for (const QString& path : pathsOf(widget))
        if (const auto facts = applicationOf(store_, services_, display_, path))
          sources.applications.insert(path, *facts);
  }

 private:
  const AppStore& store_;
  const TileServices& services_;
  const QString display_;
};

class DocumentSource final : public TileSource {
 public:
  explicit DocumentSource(const AppStore& store) : store_(store) {}
  void fill(TileSources& sources, const QList<DockWidget>&) override {
    sources.shelfItems = store_.config().shelf.size();
    sources.todos = store_.config().todos;
    sources.latestNote.reset();
    if (const auto notes = notesByAge(store_.config()); !notes.isEmpty())
      sources.latestNote = noteReading(notes.first().options.value(option::text));
  }

 private:
  const AppStore& store_;
};

/// The calendars, the trash, and what is read of the machine and of the user's files.
class ReadingSource final : public TileSource {
 public:
  ReadingSource(const AppStore& store, const TileServices& services) : store_(store), services_(services) {}
  void fill(TileSources& sources, const QList<DockWidget>& widgets) override {
    sources.trashItems = services_.trashItems();
    sources.calendar = calendarOf(store_, services_);
    ReadingFacts readings;
    readings.downloadHistory = sources.readings.downloadHistory;
    readings.uploadHistory = sources.readings.uploadHistory;
    readings.running = sources.readings.running;
    services_.addReadings(readings, widgets);
    sources.readings = std::move(readings);
  }

 private:
  const AppStore& store_;
  const TileServices& services_;
};

}  // namespace

std::vector<std::unique_ptr<TileSource>> makeStoreSources(const AppStore& store, const Toggles& toggles,
                                                          const TileServices& services, const QString& display) {
  std::vector<std::unique_ptr<TileSource>> sources;
  sources.push_back(std::make_unique<MomentSource>(store, services));
  sources.push_back(std::make_unique<MachineSource>(store));
  sources.push_back(std::make_unique<SwitchSource>(toggles));
  sources.push_back(std::make_unique<ApplicationSource>(store, services, display));
  sources.push_back(std::make_unique<DocumentSource>(store));
  sources.push_back(std::make_unique<ReadingSource>(store, services));
  return sources;
}

TileSources storeSources(const AppStore& store, const Toggles& toggles, const TileServices& services,
                         const QList<DockWidget>& widgets) {
  TileSources sources;
  for (const auto& source : makeStoreSources(store, toggles, services, {})) source->fill(sources, widgets);
  for (TileSource* source : services.sources()) source->fill(sources, widgets);
  return sources;
}

QString iconOf(const RunningApp& app, const TileServices& services) {
  const QString own = services.ownIcon(app.path);
  return own.isEmpty() ? app.iconName : own;
}

std::shared_ptr<const CalendarDigest> calendarOf(const AppStore& store, const TileServices& services) {
  if (auto digest = services.calendar()) return digest;
  auto none = std::make_shared<CalendarDigest>();
  none->calendarMessage = store.calendarMessage();
  none->reminderMessage = store.reminderMessage();
  return none;
}

}  // namespace tarnwick
