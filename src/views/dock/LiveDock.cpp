#include "views/dock/LiveDock.h"

#include <QResizeEvent>

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

}  // namespace

LiveDock::LiveDock(AppStore& store, Toggles& toggles, const QString& display, DockView::IconProvider icons,
                   DockActions actions)
    : store_(store), toggles_(toggles), display_(display), actions_(std::move(actions)), view_(new DockView(this)) {
  // Only a window can be translucent, so the view must not paint a ground of its own.
  setAttribute(Qt::WA_NoSystemBackground);
  view_->setIconProvider(std::move(icons));
  connect(&store_, &AppStore::configChanged, this, &LiveDock::rebuildRow);
  connect(&store_, &AppStore::runningAppsChanged, this, &LiveDock::rebuildRow);
  connect(&store_, &AppStore::ticked, this, &LiveDock::refreshTiles);
  connect(&toggles_, &Toggles::changed, this, &LiveDock::refreshTiles);
  connect(view_, &DockView::shapeChanged, this, &DockContent::shapeChanged);
  connectActions();
}

void LiveDock::configure(const DockGeometry& geometry) {
  geometry_ = geometry;
  rebuildRow();
}

void LiveDock::resizeEvent(QResizeEvent* event) { view_->setGeometry(QRect(QPoint(), event->size())); }

void LiveDock::rebuildRow() {
  const DockConfiguration& config = store_.config();
  DockRow row;
  row.widgets = store_.displayedWidgets(display_);
  if (config.liveApps) {
    for (const RunningApp& app : store_.unpinnedRunningApps(display_)) {
      row.runningApps.append({app.identity, app.name, app.iconName, app.active});
    }
  }
  row.placement = config.liveApps ? runningAppsPlacementNamed(config.desktopOptions().runningAppsPlacement)
                                  : RunningAppsPlacement::None;
  row.style = dockStyleNamed(config.style);
  row.tiles = config.tiles;
  row.monochrome = config.monochrome;
  row.scale = geometry_.scale;
  row.spacing = config.spacing;
  row.edge = edgeOf(config);
  row.composited = geometry_.composited;
  row.blurred = geometry_.blurred;
  for (const DockProfile& profile : config.profiles) row.tabs << profile.name;
  row.activeTab = store_.profileIndex(display_);
  view_->setRow(row);
  refreshTiles();
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
  for (const Toggle toggle :
       {Toggle::WiFi, Toggle::Bluetooth, Toggle::DarkMode, Toggle::DoNotDisturb, Toggle::Mute, Toggle::KeepAwake}) {
    sources.toggles.insert(toggle, toggles_.state(toggle));
  }
  return sources;
}

void LiveDock::connectActions() {
  connect(view_, &DockView::tileActivated, this, [this](const QUuid& widget) {
    store_.activeDisplay = display_;
    if (actions_.openTile) actions_.openTile(widget);
  });
  connect(view_, &DockView::tilePartActivated, this, [this](const QUuid&, int part) {
    const auto toggle = static_cast<Toggle>(part);
    toggles_.set(toggle, !toggles_.state(toggle).on);
  });
  connect(view_, &DockView::applicationActivated, this, [this](quint64 application) {
    if (actions_.bringApplication) actions_.bringApplication(application);
  });
  connect(view_, &DockView::tabActivated, this, [this](qsizetype tab) {
    const auto& profiles = store_.config().profiles;
    if (tab >= 0 && tab < profiles.size()) store_.selectProfile(profiles[tab].id, display_);
  });
  connect(view_, &DockView::addWidgetsRequested, this, [this] {
    store_.activeDisplay = display_;
    if (actions_.addWidgets) actions_.addWidgets();
  });
  connect(view_, &DockView::contextMenuRequested, this, [this](const QUuid& widget, const QPoint& position) {
    store_.activeDisplay = display_;
    if (actions_.tileMenu) actions_.tileMenu(widget, position);
  });
  connect(view_, &DockView::applicationMenuRequested, this, [this](quint64 application, const QPoint& position) {
    if (actions_.applicationMenu) actions_.applicationMenu(application, position);
  });
}

}  // namespace tarnwick
