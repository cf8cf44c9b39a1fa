#include "views/dock/LiveDock.h"

#include <QResizeEvent>
#include <QUrl>
#include <algorithm>

#include "files/KeptPictures.h"
#include "views/dock/StoreSources.h"
#include "views/families/Rooms.h"
#include "views/theme/DesktopLook.h"

namespace tarnwick {

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
  connect(view_, &DockView::widthWanted, this, &DockContent::leastWidthChanged);
  kept_ = keepStoreSources(store_, toggles_, services_, display_);
  kept_->setSeen([this] { return isVisible(); });
  connect(kept_.get(), &KeptSources::changed, this, &LiveDock::remake);
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
  return std::max(tabsWidth(scale), view_->widthWithGuest(scale));
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
  if (kept_->takeAll()) view_->refresh(kept_->values());
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
  view_->setRow(row);
  remake(kept_->setWidgets(row.widgets));
}

void LiveDock::remake(const QSet<QUuid>& widgets) {
  if (widgets.isEmpty()) return;
  view_->refresh(kept_->values(), [&widgets](const DockWidget& widget) { return widgets.contains(widget.id); });
}

QList<DockApp> LiveDock::runningApps() const {
  QList<DockApp> apps;
  for (const RunningApp& running : store_.unpinnedRunningApps(display_)) {
    const LauncherHint hint = services_.hintOf(running.desktopId);
    apps.append({running.identity, running.name, iconOf(running, services_), running.active,
                 running.urgent || hint.urgent, hint.progress, hint.count, services_.isStarting(running.path),
                 running.windows.size()});
  }
  return apps;
}

void LiveDock::showEvent(QShowEvent* event) {
  if (kept_->takeLate()) view_->refresh(kept_->values());
  DockContent::showEvent(event);
}

void LiveDock::connectStore() {
  connect(&store_, &AppStore::configChanged, this, &LiveDock::rebuildRow);
  connect(&store_, &AppStore::runningAppsChanged, this, &LiveDock::rebuildRow);
  connect(&store_, &AppStore::ticked, kept_.get(), &KeptSources::beat);
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
  host_.actOn(display_);
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
          [this](const QUuid& widget, quint64 application) { host_.openNewWindow(display_, widget, application); });
  connect(view_, &DockView::cycleWindowsRequested, this,
          [this](quint64 application, int direction) { host_.cycleWindows(display_, application, direction); });
  connect(view_, &DockView::itemsPlaced, this, [this] { host_.applicationsPlaced(display_); });
}

void LiveDock::connectGestures() {
  for (const auto signal : {&DockView::dragStarted, &DockView::dragMoved})
    connect(view_, signal, this, [this] { store_.holdRunningApps(); });
  connect(view_, &DockView::reorderRequested, this,
          [this](qsizetype from, qsizetype to) { host_.moveTile(display_, from, to); });
  view_->setOtherDocks([this](QPointF point) { return host_.isOverOtherDock(display_, point); });
  connect(view_, &DockView::leftForOtherDock, this,
          [this](const QUuid& widget, QPointF point) { host_.moveTileAcross(display_, widget, point); });
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
    host_.actOn(display_);
    const auto& profiles = store_.config().profiles;
    if (tab >= 0 && tab < profiles.size()) store_.selectProfile(profiles[tab].id, display_);
  });
  connect(view_, &DockView::moveRequested, this, [this](const QPoint& delta) { host_.moveDock(display_, delta); });
  connect(view_, &DockView::moveFinished, this, [this] { host_.finishMove(display_); });
}

}  // namespace tarnwick
