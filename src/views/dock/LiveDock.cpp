#include "views/dock/LiveDock.h"

#include <QResizeEvent>
#include <algorithm>

#include "views/tiles/NoteTiles.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

/// The locale writes the hour of a 24-hour clock with a capital letter or has no mark for morning and evening.
bool writes24Hours(const QLocale& locale) {
  return !locale.timeFormat(QLocale::ShortFormat).contains("ap"_L1, Qt::CaseInsensitive);
}

Edge edgeOf(const DockConfiguration& config) {
  const bool top =
      config.layout == DockLayout::RevealTop || (config.layout == DockLayout::Fixed && config.position == "top"_L1);
  return top ? Edge::Top : Edge::Bottom;
}

/// The action with its arguments, if there is one.
template <class Function, class... Arguments>
auto ask(const Function& function, const Arguments&... arguments) -> decltype(function(arguments...)) {
  using Answer = decltype(function(arguments...));
  if (function) return function(arguments...);
  if constexpr (!std::is_void_v<Answer>) return Answer{};
}

QStringList pathsOf(const DockWidget& widget) {
  QStringList paths = widget.options.value(u"paths"_s).split(u'\n', Qt::SkipEmptyParts);
  if (widget.kind == "appLauncher"_L1) paths.append(widget.options.value(u"path"_s));
  paths.removeAll(QString());
  return paths;
}

}  // namespace

LiveDock::LiveDock(AppStore& store, Toggles& toggles, const QString& display, DockView::IconProvider icons,
                   DockActions actions)
    : store_(store), toggles_(toggles), display_(display), actions_(std::move(actions)), view_(new DockView(this)) {
  // Only a window can be translucent, so the view must not paint a ground of its own.
  setAttribute(Qt::WA_NoSystemBackground);
  setFocusProxy(view_);
  view_->setScheduler(&store_.scheduler());
  view_->setIconProvider(std::move(icons));
  view_->setSwitchGuard([this] { return ask(actions_.panelIsOpen); });
  connect(view_, &DockView::shapeChanged, this, &DockContent::shapeChanged);
  connectStore();
  connectTiles();
  connectApplications();
  connectHands();
}

void LiveDock::configure(const DockGeometry& geometry) {
  geometry_ = geometry;
  rebuildRow();
}

void LiveDock::resizeEvent(QResizeEvent* event) { view_->setGeometry(QRect(QPoint(), event->size())); }

// --- What it shows --------------------------------------------------------------------------------------------------

void LiveDock::rebuildRow() {
  const DockConfiguration& config = store_.config();
  const DesktopOptions options = config.desktopOptions();
  DockRow row;
  row.widgets = store_.displayedWidgets(display_);
  if (config.liveApps) row.runningApps = runningApps();
  row.placement =
      config.liveApps ? runningAppsPlacementNamed(options.runningAppsPlacement) : RunningAppsPlacement::None;
  row.style = dockStyleNamed(config.style);
  row.tiles = config.tiles;
  row.monochrome = config.monochrome;
  row.scale = geometry_.scale;
  row.spacing = config.spacing;
  row.edge = edgeOf(config);
  row.composited = geometry_.composited;
  row.blurred = geometry_.blurred;
  row.reduceMotion = ask(actions_.reducesMotion);
  for (const DockProfile& profile : config.profiles) row.tabs << profile.name;
  row.activeTab = store_.profileIndex(display_);
  row.tabsOnHover = options.profileSwitcherOnHover;
  row.swipes = options.profileSwipe;
  row.floats = config.layout == DockLayout::Floating;
  view_->setRow(row);
  refreshTiles();
}

QList<DockApp> LiveDock::runningApps() const {
  QList<DockApp> apps;
  for (const RunningApp& running : store_.unpinnedRunningApps(display_)) {
    const LauncherHint hint = ask(actions_.hintOf, running.desktopId);
    apps.append({running.identity, running.name, running.iconName, running.active, hint.urgent, hint.progress,
                 hint.count, false});
  }
  return apps;
}

QHash<QString, ApplicationFacts> LiveDock::pinnedApplications() const {
  QHash<QString, ApplicationFacts> applications;
  for (const DockWidget& widget : view_->row().widgets) {
    for (const QString& path : pathsOf(widget)) {
      auto facts = ask(actions_.applicationAt, path);
      const auto running = std::ranges::find(store_.runningApps(), path, &RunningApp::path);
      const bool runs = running != store_.runningApps().end();
      if (!facts && runs) facts = ApplicationFacts{running->name, running->iconName, 0, {}};
      if (!facts) continue;
      if (runs) {
        const LauncherHint hint = ask(actions_.hintOf, running->desktopId);
        facts->identity = running->identity;
        facts->marks = {true, running->active, hint.urgent, false, hint.progress, hint.count};
      }
      facts->marks.launching = !runs && ask(actions_.isStarting, path);
      applications.insert(path, *facts);
    }
  }
  return applications;
}

void LiveDock::refreshTiles() { view_->refresh(sources()); }

TileSources LiveDock::sources() const {
  TileSources sources;
  sources.now = store_.now();
  sources.use24Hour = writes24Hours(sources.locale);
  const SystemMetrics& system = store_.system();
  if (!system.cpuHistory().isEmpty()) sources.metrics = system.snapshot();
  sources.cpuHistory = system.cpuHistory();
  sources.memoryHistory = system.ramHistory();
  sources.networkHistory = system.networkHistory();
  sources.readings.downloadHistory = system.downloadHistory();
  sources.readings.uploadHistory = system.uploadHistory();
  for (const RunningApp& app : store_.runningApps())
    sources.readings.running.append({app.identity, app.name, app.iconName, app.active});
  for (const Toggle toggle :
       {Toggle::WiFi, Toggle::Bluetooth, Toggle::DarkMode, Toggle::DoNotDisturb, Toggle::Mute, Toggle::KeepAwake}) {
    sources.toggles.insert(toggle, toggles_.state(toggle));
  }
  sources.applications = pinnedApplications();
  sources.shelfItems = store_.config().shelf.size();
  sources.trashItems = ask(actions_.trashItems);
  sources.todos = store_.config().todos;
  sources.calendar = calendar();
  if (const auto notes = notesByAge(store_.config()); !notes.isEmpty())
    sources.latestNote = noteReading(notes.first().options.value(u"text"_s));
  if (actions_.addReadings) actions_.addReadings(sources.readings, view_->row().widgets);
  return sources;
}

std::shared_ptr<const CalendarDigest> LiveDock::calendar() const {
  if (auto digest = ask(actions_.calendar)) return digest;
  auto none = std::make_shared<CalendarDigest>();
  none->calendarMessage = store_.calendarMessage();
  none->reminderMessage = store_.reminderMessage();
  return none;
}

void LiveDock::connectStore() {
  connect(&store_, &AppStore::configChanged, this, &LiveDock::rebuildRow);
  connect(&store_, &AppStore::runningAppsChanged, this, &LiveDock::rebuildRow);
  connect(&store_, &AppStore::ticked, this, &LiveDock::refreshTiles);
  connect(&toggles_, &Toggles::changed, this, &LiveDock::refreshTiles);
}

// --- What a hand does -----------------------------------------------------------------------------------------------

void LiveDock::connectTiles() {
  connect(view_, &DockView::tileActivated, this, [this](const QUuid& widget) {
    store_.activeDisplay = display_;
    ask(actions_.openTile, widget, view_->besideRect(widget));
  });
  connect(view_, &DockView::tilePartActivated, this, &LiveDock::activatePart);
  connect(view_, &DockView::addWidgetsRequested, this, [this] {
    store_.activeDisplay = display_;
    ask(actions_.addWidgets);
  });
  connect(view_, &DockView::contextMenuRequested, this, [this](const QUuid& widget, const QRect& beside) {
    store_.activeDisplay = display_;
    widget.isNull() ? ask(actions_.dockMenu, beside) : ask(actions_.tileMenu, widget, beside);
  });
  connect(view_, &DockView::focusLeft, this, [this] { ask(actions_.giveBackKeyboard); });
}

void LiveDock::activatePart(const QUuid& id, int part) {
  const auto& shown = view_->row().widgets;
  const auto widget = std::ranges::find(shown, id, &DockWidget::id);
  if (widget == shown.end()) return;
  const QString& family = Catalog::find(widget->kind).family;
  if (family == "timer"_L1) {
    store_.toggleTimer(id);
  } else if (family == "water"_L1) {
    store_.drink(id);
  } else if (family == "habit"_L1) {
    store_.toggleHabit(id);
  } else if (family == "todos"_L1) {
    const auto& todos = store_.config().todos;
    if (part >= 0 && part < todos.size()) store_.toggleTodo(todos[part].id);
  } else if (family == "calendar"_L1) {
    if (const auto& meeting = calendar()->nextMeeting) ask(actions_.openUrl, QUrl(meeting->meetingLink));
  } else if (family == "reminders"_L1) {
    const auto digest = calendar();
    if (part >= 0 && part < digest->reminders.size()) ask(actions_.completeReminder, digest->reminders[part]);
  } else if (widget->kind == "openWindows"_L1) {
    const auto& running = store_.runningApps();
    if (part >= 0 && part < running.size()) ask(actions_.bringApplication, running[part].identity);
  } else if (family == "toggles"_L1) {
    const auto toggle = static_cast<Toggle>(part);
    toggles_.set(toggle, !toggles_.state(toggle).on);
  }
}

void LiveDock::connectApplications() {
  connect(view_, &DockView::applicationActivated, this,
          [this](quint64 application) { ask(actions_.bringApplication, application); });
  connect(view_, &DockView::applicationMenuRequested, this, [this](quint64 application, const QRect& beside) {
    store_.activeDisplay = display_;
    ask(actions_.applicationMenu, application, beside);
  });
  connect(view_, &DockView::newWindowRequested, this,
          [this](const QUuid& widget, quint64 application) { ask(actions_.openNewWindow, widget, application); });
  connect(view_, &DockView::cycleWindowsRequested, this,
          [this](quint64 application, int direction) { ask(actions_.cycleWindows, application, direction); });
  connect(view_, &DockView::itemsPlaced, this, [this] { ask(actions_.placeApplications, view_->applicationPlaces()); });
}

void LiveDock::connectHands() {
  for (const auto signal : {&DockView::dragStarted, &DockView::dragMoved})
    connect(view_, signal, this, [this] { store_.holdRunningApps(); });
  connect(view_, &DockView::reorderRequested, this, [this](qsizetype from, qsizetype to) {
    store_.activeDisplay = display_;
    store_.moveDisplayed(from, to);
  });
  connect(view_, &DockView::filesDropped, this, [this](DockFileDrop drop) {
    drop.display = display_;
    store_.activeDisplay = display_;
    ask(actions_.dropFiles, drop);
  });
  connect(view_, &DockView::widgetTextDropped, this, [this](const QString& text, qsizetype index) {
    store_.activeDisplay = display_;
    ask(actions_.dropWidget, text, index);
  });
  connect(view_, &DockView::tabActivated, this, [this](qsizetype tab) {
    const auto& profiles = store_.config().profiles;
    if (tab >= 0 && tab < profiles.size()) store_.selectProfile(profiles[tab].id, display_);
  });
  connect(view_, &DockView::moveRequested, this, [this](const QPoint& delta) { ask(actions_.moveDock, delta); });
  connect(view_, &DockView::moveFinished, this, [this] { ask(actions_.dockMoved); });
}

}  // namespace tarnwick
