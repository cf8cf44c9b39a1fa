#include "views/dock/StoreSources.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "widgets/ClockWords.h"
#include "widgets/QuickNotes.h"
#include "widgets/Ticking.h"
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
    const RunningApp shown = running->within(store.windowScope(display));
    const qsizetype windows = shown.windows.size();
    facts->marks = {windows > 0, shown.active, running->urgent || hint.urgent, false, hint.progress,
                    hint.count,  windows};
  }
  facts->marks.launching = services.isStarting(path);
  return facts;
}

/// What many applications are shown by.
const QList<Family> kApplicationFamilies{Family::Apps, Family::Launcher, Family::Windows};

class MomentSource final : public TileSource {
 public:
  MomentSource(const AppStore& store, const TileServices& services) : store_(store), services_(services) {
    connect(&services_, &TileServices::habitsChanged, this, [this] {
      Q_EMIT changed({Family::Clock, Family::Calendar, Family::Reminders});
    });
  }
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
    if (!system_.cpuHistory().isEmpty()) sources.metrics = system_.snapshot();
    // The first look alone says nothing about the processor.
    if (system_.cpuHistory().size() == 1) sources.metrics->cpu = std::numeric_limits<double>::quiet_NaN();
    sources.cpuHistory = measured(system_.cpuHistory());
    sources.memoryHistory = system_.ramHistory();
    sources.networkHistory = measured(system_.networkHistory());
    sources.downloadHistory = measured(system_.downloadHistory());
    sources.uploadHistory = measured(system_.uploadHistory());
  }

 private:
  /// A history of what follows from two looks at the counters, without what stands for the first look.
  QList<double> measured(const QList<double>& history) const {
    return system_.holdsFirstSample() && !history.isEmpty() ? history.sliced(1) : history;
  }

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
      : store_(store), services_(services), display_(display), choices_(choices()) {
    const auto tell = [this] { Q_EMIT changed(kApplicationFamilies); };
    connect(&store_, &AppStore::configChanged, this, [this, tell] {
      if (std::exchange(choices_, choices()) != choices_) tell();
    });
    connect(&store_, &AppStore::runningAppsChanged, this, tell);
    connect(&services_, &TileServices::applicationsChanged, this, tell);
    connect(&services_, &TileServices::entriesChanged, this, tell);
  }
  void fill(TileSources& sources, const QList<DockWidget>& widgets) override {
    sources.running.clear();
    for (const RunningApp& app : store_.runningApps())
      sources.running.append({app.identity, app.name, iconOf(app, services_), app.active});
    sources.applications.clear();
    for (const DockWidget& widget : widgets)
      for (const QString& path : pathsOf(widget))
        if (const auto facts = applicationOf(store_, services_, display_, path))
          sources.applications.insert(path, *facts);
  }
  bool readsOptionsOf(const DockWidget& widget) const override { return !pathsOf(widget).isEmpty(); }

 private:
  /// What the settings say of how applications are shown.
  struct Choices {
    QMap<QString, QString> icons;
    WindowScope scope;

    bool operator==(const Choices&) const = default;
  };
  Choices choices() const { return {store_.config().desktop.customAppIcons, store_.windowScope(display_)}; }

  const AppStore& store_;
  const TileServices& services_;
  const QString display_;
  Choices choices_;
};

/// What the settings hold that several tiles show. Most changes of the settings are none of it.
class DocumentSource final : public TileSource {
 public:
  explicit DocumentSource(const AppStore& store)
      : store_(store), shelf_(shelf()), todos_(todos()), note_(note()), keepsClipboard_(keepsClipboard()) {
    connect(&store_, &AppStore::configChanged, this, &DocumentSource::compare);
  }
  void fill(TileSources& sources, const QList<DockWidget>&) override {
    sources.shelfItems = shelf();
    sources.todos = todos();
    sources.latestNote = note();
    sources.keepsClipboard = keepsClipboard();
  }

 private:
  qint64 shelf() const { return store_.config().shelf.size(); }
  QList<TodoItem> todos() const { return store_.config().todos; }
  std::optional<NoteReading> note() const {
    const auto notes = QuickNotes::byAge(store_.config());
    if (notes.isEmpty()) return std::nullopt;
    return QuickNotes::reading(notes.first().options.value(option::text));
  }
  bool keepsClipboard() const { return store_.config().clipboardEnabled; }
  void compare() {
    QList<Family> families;
    if (std::exchange(shelf_, shelf()) != shelf_) families << Family::Files;
    if (std::exchange(todos_, todos()) != todos_) families << Family::Todos << Family::Calendar;
    if (std::exchange(note_, note()) != note_) families << Family::NativeNotes;
    if (std::exchange(keepsClipboard_, keepsClipboard()) != keepsClipboard_) families << Family::Clipboard;
    if (!families.isEmpty()) Q_EMIT changed(families);
  }

  const AppStore& store_;
  qint64 shelf_;
  QList<TodoItem> todos_;
  std::optional<NoteReading> note_;
  bool keepsClipboard_;
};

class TrashSource final : public TileSource {
 public:
  explicit TrashSource(const TileServices& services) : services_(services) {
    connect(&services_, &TileServices::trashChanged, this, [this] { Q_EMIT changed({Family::Files}); });
  }
  void fill(TileSources& sources, const QList<DockWidget>& widgets) override {
    // Counting begins to watch the trash.
    const auto showsTrash = [](const DockWidget& widget) {
      return KindTraits::of(widget.kind).opens == TileOpens::Trash;
    };
    if (std::ranges::any_of(widgets, showsTrash)) sources.trashItems = services_.trashItems();
  }

 private:
  const TileServices& services_;
};

class CalendarsSource final : public TileSource {
 public:
  CalendarsSource(const AppStore& store, const TileServices& services) : store_(store), services_(services) {
    const auto tell = [this] { Q_EMIT changed({Family::Calendar, Family::Reminders}); };
    connect(&services_, &TileServices::calendarChanged, this, tell);
    connect(&store_, &AppStore::calendarMessageChanged, this, tell);
    connect(&store_, &AppStore::reminderMessageChanged, this, tell);
  }
  void fill(TileSources& sources, const QList<DockWidget>&) override {
    sources.calendar = calendarOf(store_, services_);
  }
  bool turnsWithTheMinute() const override { return true; }

 private:
  const AppStore& store_;
  const TileServices& services_;
};

/// What is read of the machine and of the user's files.
class ReadingSource final : public TileSource {
 public:
  explicit ReadingSource(const TileServices& services) : services_(services) {
    connect(&services_, &TileServices::readingsChanged, this, [this](const QList<Family>& families) {
      announced_ = families;
      Q_EMIT changed(families);
      announced_.clear();
    });
  }
  /// While a change of some families is announced, only theirs is read again.
  void fill(TileSources& sources, const QList<DockWidget>& widgets) override {
    QList<DockWidget> read = widgets;
    if (!announced_.isEmpty()) read.removeIf([this](const DockWidget& widget) { return !isAnnounced(widget); });
    services_.addReadings(sources.readings, read);
  }
  /// A folder's tile says itself which folder it shows.
  bool readsOptionsOf(const DockWidget& widget) const override {
    return Catalog::find(widget.kind).family == Family::Files;
  }

 private:
  bool isAnnounced(const DockWidget& widget) const {
    const QString& family = Catalog::find(widget.kind).family;
    return std::ranges::any_of(announced_, [&](Family each) { return family == each; });
  }

  const TileServices& services_;
  QList<Family> announced_;
};

}  // namespace

std::unique_ptr<KeptSources> keepStoreSources(const AppStore& store, const Toggles& toggles,
                                              const TileServices& services, const QString& display) {
  KeptSources::Setup setup;
  setup.own.push_back(std::make_unique<MomentSource>(store, services));
  setup.own.push_back(std::make_unique<MachineSource>(store));
  setup.own.push_back(std::make_unique<SwitchSource>(toggles));
  setup.own.push_back(std::make_unique<ApplicationSource>(store, services, display));
  setup.own.push_back(std::make_unique<DocumentSource>(store));
  setup.own.push_back(std::make_unique<TrashSource>(services));
  setup.own.push_back(std::make_unique<CalendarsSource>(store, services));
  setup.own.push_back(std::make_unique<ReadingSource>(services));
  setup.borrowed = services.sources();
  setup.now = [&store] { return store.now(); };
  setup.cadence = &Ticking::cadence;
  return std::make_unique<KeptSources>(std::move(setup));
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
