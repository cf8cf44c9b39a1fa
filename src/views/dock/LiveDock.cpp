#include "views/dock/LiveDock.h"

#include <QResizeEvent>
#include <QUrl>
#include <algorithm>

#include "files/KeptPictures.h"
#include "views/dock/StoreSources.h"
#include "views/families/Rooms.h"
#include "views/theme/DesktopLook.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

constexpr qint64 kMinute = 60;

bool isSameTile(const DockWidget& one, const DockWidget& other) { return one.id == other.id && one.kind == other.kind; }

qint64 minuteOf(const QDateTime& moment) { return moment.toSecsSinceEpoch() / kMinute; }

}  // namespace

LiveDock::LiveDock(AppStore& store, Toggles& toggles, Commands& commands, DockHost& host, const QString& display,
                   DockView::IconProvider icons, const TileServices& services)
    : store_(store),
      toggles_(toggles),
      commands_(commands),
      host_(host),
      display_(display),
      services_(services),
      view_(new DockView(store.scheduler(), this)) {
  // Only a window can be translucent, so the view must not paint a ground of its own.
  setAttribute(Qt::WA_NoSystemBackground);
  setFocusProxy(view_);
  view_->setIconProvider(std::move(icons));
  view_->setSwitchGuard([this] { return host_.holdsProfile(); });
  connect(view_, &DockView::shapeChanged, this, &DockContent::shapeChanged);
  storeSources_ = makeStoreSources(store_, toggles_, services_, display_);
  for (TileSource* source : allSources()) follow(*source);
  connectStore();
  connectServices();
  connectTiles();
  connectApplications();
  connectGestures();
}

void LiveDock::configure(const DockGeometry& geometry) {
  geometry_ = geometry;
  rebuild();
}

double LiveDock::leastWidth(double scale) const {
  const DockConfiguration& config = store_.config();
  if (config.liveApps && store_.displayedWidgets(display_).isEmpty()) {
    // The specified measure of a row knows nothing of the place that asks for widgets.
    DockRow row;
    row.scale = scale;
    row.spacing = config.spacing;
    row.runningApps = runningApps();
    row.placement = runningAppsPlacementNamed(config.desktopOptions().runningAppsPlacement);
    return std::max(tabsWidth(scale), RowLayout::idealWidth(row));
  }
  return tabsWidth(scale);
}

double LiveDock::tabsWidth(double scale) const {
  const DockConfiguration& config = store_.config();
  if (config.profiles.size() < 2 || !config.desktopOptions().profileSwitcherOnHover) return 0;
  QStringList names;
  for (const DockProfile& profile : config.profiles) names << profile.name;
  return RowLayout::tabsWidth(names, scale);
}

void LiveDock::resizeEvent(QResizeEvent* event) { view_->setGeometry(QRect(QPoint(), event->size())); }

// --- What it shows --------------------------------------------------------------------------------------------------

void LiveDock::rebuild() {
  rebuildRow();
  refreshTiles();
}

void LiveDock::rebuildRow() {
  const DockConfiguration& config = store_.config();
  const DesktopOptions& options = config.desktopOptions();
  DockRow row;
  row.widgets = store_.displayedWidgets(display_);
  if (config.liveApps) row.runningApps = runningApps();
  row.placement =
      config.liveApps ? runningAppsPlacementNamed(options.runningAppsPlacement) : RunningAppsPlacement::None;
  row.style = shownStyle(config);
  row.tiles = config.tiles;
  row.tileBorders = config.tileBorders.value_or(true);
  row.monochrome = config.monochrome;
  row.iconStyle = options.appIconStyle;
  row.reduceTransparency = options.reduceTransparency;
  row.picture = {KeptPictures::file(store_.dataDirectory(), options.backgroundImage), options.backgroundBlur,
                 options.backgroundDim};
  row.highContrast = DesktopLook::now().highContrast;
  // No text is sure of its contrast on a picture.
  if (row.highContrast) row.picture = {};
  row.swelling = Magnification::amountNamed(config.desk().magnification);
  row.scale = geometry_.scale;
  row.spacing = config.spacing;
  row.edge = geometry_.atTop ? Edge::Top : Edge::Bottom;
  row.composited = geometry_.composited;
  row.blurred = geometry_.blurred;
  row.reduceMotion = services_.reducesMotion();
  for (const DockProfile& profile : config.profiles) row.tabs << profile.name;
  row.activeTab = store_.profileIndex(display_);
  row.tabsOnHover = options.profileSwitcherOnHover;
  row.swipes = options.profileSwipe;
  row.floats = geometry_.floats;
  row.sendsNearby = services_.sendsNearby();
  const QList<DockWidget> before = view_->row().widgets;
  view_->setRow(row);
  if (!std::ranges::equal(before, row.widgets, isSameTile))
    refreshTiles();
  else if (before != row.widgets)
    takeEdited(before);
}

/// An edit of one widget, such as a letter in a note, asks for nothing that other tiles show.
void LiveDock::takeEdited(const QList<DockWidget>& before) {
  if (!isSeen()) return;
  const QList<DockWidget>& widgets = view_->row().widgets;
  const auto isEdited = [&before](const DockWidget& widget) { return !before.contains(widget); };
  for (TileSource* source : allSources()) {
    const auto isRead = [&](const DockWidget& widget) { return isEdited(widget) && source->readsOptionsOf(widget); };
    if (std::ranges::any_of(widgets, isRead)) source->fill(shown_, widgets);
  }
  shown_.now = store_.now();
  view_->refresh(shown_, isEdited);
}

QList<DockApp> LiveDock::runningApps() const {
  QList<DockApp> apps;
  for (const RunningApp& running : store_.unpinnedRunningApps(display_)) {
    const LauncherHint hint = services_.hintOf(running.desktopId);
    apps.append({running.identity, running.name, iconOf(running, services_), running.active,
                 running.urgent || hint.urgent, hint.progress, hint.count, false, running.windows.size()});
  }
  return apps;
}

bool LiveDock::isSeen() {
  if (isVisible()) return true;
  isLate_ = true;
  return false;
}

void LiveDock::showEvent(QShowEvent* event) {
  if (isLate_) refreshTiles();
  DockContent::showEvent(event);
}

void LiveDock::refreshTiles() {
  if (isFilled_ && !isSeen()) return;
  isFilled_ = true;
  isLate_ = false;
  shown_ = sources();
  minute_ = minuteOf(shown_.now);
  view_->refresh(shown_);
}

/// Most seconds change nothing but the time.
void LiveDock::beat() {
  if (!isSeen()) return;
  const QDateTime now = store_.now();
  const bool turns = minuteOf(now) != minute_;
  minute_ = minuteOf(now);
  const auto isDue = [turns](const DockWidget& widget) {
    const TickCadence cadence = Rooms::cadence(widget);
    return cadence == TickCadence::Second || (turns && cadence == TickCadence::Minute);
  };
  if (std::ranges::none_of(view_->row().widgets, isDue)) return;
  shown_.now = now;
  if (turns)
    for (TileSource* source : allSources())
      if (source->turnsWithTheMinute()) source->fill(shown_, view_->row().widgets);
  view_->refresh(shown_, isDue);
}

void LiveDock::follow(TileSource& source) {
  connect(&source, &TileSource::changed, this, [this, &source](const QList<Family>& families) {
    take(source, [&](const DockWidget& widget) {
      const QString& family = Catalog::find(widget.kind).family;
      return std::ranges::any_of(families, [&](Family each) { return family == each; });
    });
  });
  connect(&source, &TileSource::widgetChanged, this, [this, &source](const QUuid& id) {
    take(source, [&](const DockWidget& widget) { return widget.id == id; });
  });
}

void LiveDock::take(TileSource& source, const std::function<bool(const DockWidget&)>& which) {
  if (std::ranges::none_of(view_->row().widgets, which) || !isSeen()) return;
  source.fill(shown_, view_->row().widgets);
  shown_.now = store_.now();
  view_->refresh(shown_, which);
}

QList<TileSource*> LiveDock::allSources() const {
  QList<TileSource*> all;
  for (const auto& source : storeSources_) all << source.get();
  return all + services_.sources();
}

TileSources LiveDock::sources() const {
  TileSources sources;
  for (TileSource* source : allSources()) source->fill(sources, view_->row().widgets);
  return sources;
}

void LiveDock::connectStore() {
  connect(&store_, &AppStore::configChanged, this, &LiveDock::rebuildRow);
  connect(&store_, &AppStore::runningAppsChanged, this, &LiveDock::rebuildRow);
  connect(&store_, &AppStore::ticked, this, &LiveDock::beat);
}

void LiveDock::connectServices() {
  connect(&services_, &TileServices::applicationsChanged, this, &LiveDock::rebuildRow);
  connect(&services_, &TileServices::entriesChanged, this, [this] {
    view_->forgetIcons();
    rebuildRow();
  });
  connect(&services_, &TileServices::habitsChanged, this, &LiveDock::rebuild);
}

// --- Gestures -------------------------------------------------------------------------------------------------------

void LiveDock::connectTiles() {
  connect(view_, &DockView::tileActivated, this, [this](const QUuid& widget) { host_.activateTile(display_, widget); });
  connect(view_, &DockView::tilePartActivated, this, &LiveDock::activatePart);
  connect(view_, &DockView::addWidgetsRequested, this, [this] { commands_.showLibrary(display_); });
  connect(view_, &DockView::contextMenuRequested, this, [this](const QUuid& widget, const QRect& beside) {
    widget.isNull() ? host_.openDockMenu(display_, beside) : host_.openTileMenu(display_, widget, beside);
  });
  view_->setCommandProvider([this](const QUuid& widget, quint64 application, const QRect& beside) {
    return host_.commandsOf(display_, widget, application, beside);
  });
  connect(view_, &DockView::panelDismissed, this, [this] { host_.dismissPanel(); });
  connect(view_, &DockView::focusLeft, this, [this] { host_.leaveKeyboard(); });
}

void LiveDock::activatePart(const QUuid& id, int part) {
  const auto& shown = view_->row().widgets;
  const auto widget = std::ranges::find(shown, id, &DockWidget::id);
  if (widget == shown.end()) return;
  Rooms::act({*widget, part, display_, store_, toggles_, commands_, [this] { return calendarOf(store_, services_); }});
}

void LiveDock::connectApplications() {
  connect(view_, &DockView::applicationActivated, this,
          [this](quint64 application) { commands_.activateApplication(application, display_); });
  connect(view_, &DockView::windowsRequested, this,
          [this](quint64 application, const QRect& beside) { host_.openWindowMenu(display_, application, beside); });
  connect(view_, &DockView::applicationMenuRequested, this, [this](quint64 application, const QRect& beside) {
    host_.openApplicationMenu(display_, application, beside);
  });
  connect(view_, &DockView::newWindowRequested, this,
          [this](const QUuid& widget, quint64 application) { host_.openNewWindow(widget, application); });
  connect(view_, &DockView::cycleWindowsRequested, this,
          [this](quint64 application, int direction) { host_.cycleWindows(application, direction); });
  connect(view_, &DockView::itemsPlaced, this, [this] { host_.applicationsPlaced(display_); });
}

void LiveDock::connectGestures() {
  for (const auto signal : {&DockView::dragStarted, &DockView::dragMoved})
    connect(view_, signal, this, [this] { store_.holdRunningApps(); });
  connect(view_, &DockView::reorderRequested, this,
          [this](qsizetype from, qsizetype to) { host_.moveTile(display_, from, to); });
  connect(view_, &DockView::removalRequested, this,
          [this](const QUuid& widget) { host_.removeTile(display_, widget); });
  connect(view_, &DockView::undoRequested, this, [this] { commands_.undo(); });
  connect(view_, &DockView::redoRequested, this, [this] { commands_.redo(); });
  connect(view_, &DockView::filesDropped, this, [this](DockFileDrop drop) {
    drop.display = display_;
    host_.dropFiles(drop);
  });
  connect(view_, &DockView::widgetTextDropped, this,
          [this](const QString& text, qsizetype index) { host_.dropWidget(display_, text, index); });
  connect(view_, &DockView::tabActivated, this, [this](qsizetype tab) {
    const auto& profiles = store_.config().profiles;
    if (tab >= 0 && tab < profiles.size()) store_.selectProfile(profiles[tab].id, display_);
  });
  connect(view_, &DockView::moveRequested, this, [this](const QPoint& delta) { host_.moveDock(display_, delta); });
  connect(view_, &DockView::moveFinished, this, [this] { host_.finishMove(display_); });
}

}  // namespace tarnwick
