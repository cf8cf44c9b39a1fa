#include "dock/DockController.h"

#include <QtMath>

#include "dock/rules/DesktopMath.h"
#include "store/AppStore.h"

namespace tarnwick {
namespace {

std::optional<QPointF> savedPlace(const DockConfiguration& config, const QString& display) {
  const auto place = config.floatingPositions.constFind(display);
  if (place == config.floatingPositions.constEnd() || place->size() != 2) return std::nullopt;
  return QPointF(place->at(0), place->at(1));
}

}  // namespace

DockController::DockController(AppStore& store, Screens& screens, Panels& panels, ContentFactory factory)
    : store_(store), screens_(screens), panels_(panels), factory_(std::move(factory)) {
  connect(&screens_, &Screens::changed, this, &DockController::refresh);
  connect(&panels_, &Panels::compositingChanged, this, &DockController::refresh);
  connect(&store_, &AppStore::runningAppsChanged, this, [this] {
    if (store_.config().liveApps) refresh();
  });
}

DockController::~DockController() { shutdown(); }

void DockController::refresh() {
  if (down_) return;
  refreshWork_ = store_.scheduler().after(kRefreshDelay, [this] { layoutPanels(); });
}

void DockController::toggle() {
  manuallyHidden_ = !manuallyHidden_;
  if (manuallyHidden_) {
    setVisible(false);
  } else {
    refresh();
  }
}

void DockController::setMayShow(bool mayShow) {
  if (mayShow_ == mayShow) return;
  mayShow_ = mayShow;
  if (!mayShow_) {
    setVisible(false);
  } else if (!down_) {
    // The first picture need not wait for a burst of changes to settle.
    layoutPanels();
  }
}

void DockController::shutdown() {
  down_ = true;
  refreshWork_.reset();
  docks_.clear();
}

QStringList DockController::displays() const {
  QStringList ids;
  for (const auto& [id, dock] : docks_) ids << id;
  return ids;
}

QRectF DockController::frame(const QString& display) const {
  const auto dock = docks_.find(display);
  return dock == docks_.end() ? QRectF() : dock->second.frame;
}

void DockController::layoutPanels() {
  refreshWork_.reset();
  const QList<Screen> screens = screens_.all();
  QStringList connected;
  for (const Screen& screen : screens) connected << screen.id;
  const QStringList selected = DesktopMath::selectedDisplays(
      store_.config().display, connected, store_.config().desktopOptions().attachedDisplays, screens_.mainId());

  std::erase_if(docks_, [&](const auto& entry) { return !selected.contains(entry.first); });
  for (const Screen& screen : screens) {
    if (selected.contains(screen.id)) layout(screen);
  }
}

void DockController::layout(const Screen& screen) {
  const DockConfiguration& config = store_.config();
  const int apps = config.liveApps ? static_cast<int>(store_.unpinnedRunningApps(screen.id).size()) : 0;
  const DockPlacement::Row row = DockPlacement::row(store_.displayedWidgets(screen.id), apps);
  const DockPlacement::Size size = DockPlacement::size(config, row, screen.usable.width());
  const QRectF slot =
      DockPlacement::place(config, size.panel, screen.frame, screen.usable, savedPlace(config, screen.id));

  Shown& dock = shown(screen);
  dock.geometry = {screen.id, slot.size(), size.scale, panels_.isComposited(), panels_.canBlur()};
  dock.content->configure(dock.geometry);
  dock.frame = slot;
  const PanelPlacement placement{screen.id, slot.translated(-screen.frame.topLeft()).toAlignedRect(),
                                 dock.content->margins()};
  if (placement != dock.placement) {
    dock.placement = placement;
    dock.panel->place(placement);
  }
  applyShape(dock);
  reserveSpace(dock, screen);
  dock.panel->setShown(mayShow_ && !manuallyHidden_);
}

DockController::Shown& DockController::shown(const Screen& screen) {
  Shown& dock = docks_[screen.id];
  if (dock.panel) return dock;
  std::unique_ptr<DockContent> content = factory_(screen.id);
  dock.content = content.get();
  dock.panel = panels_.make(std::move(content));
  connect(dock.content, &DockContent::shapeChanged, this, [this, id = screen.id] {
    if (const auto found = docks_.find(id); found != docks_.end()) applyShape(found->second);
  });
  // The window system took the window: the next pass makes a new one if the display is still there.
  connect(dock.panel.get(), &Panel::closed, this, [this, id = screen.id] {
    QMetaObject::invokeMethod(
        this,
        [this, id] {
          docks_.erase(id);
          refresh();
        },
        Qt::QueuedConnection);
  });
  return dock;
}

void DockController::applyShape(const Shown& dock) {
  const QRegion outline = dock.content->outline();
  dock.panel->setOutline(outline);
  dock.panel->setInputRegion(dock.content->inputRegion());
  dock.panel->setBlurBehind(dock.geometry.blurred ? outline : QRegion());
}

void DockController::reserveSpace(const Shown& dock, const Screen& screen) {
  const DockConfiguration& config = store_.config();
  const bool owns = config.layout == DockLayout::Fixed || config.layout == DockLayout::Replace;
  const bool top = config.layout == DockLayout::Fixed && config.position == QLatin1String("top");
  const Edge edge = top ? Edge::Top : Edge::Bottom;
  const double inner = top ? dock.frame.bottom() - screen.frame.top() : screen.frame.bottom() - dock.frame.top();
  const bool reserves = owns && config.desktopOptions().reserveSpace && mayShow_ && !manuallyHidden_;
  dock.panel->reserve(edge, reserves ? qCeil(inner) : 0);
}

void DockController::setVisible(bool visible) {
  for (auto& [id, dock] : docks_) dock.panel->setShown(visible);
}

}  // namespace tarnwick
