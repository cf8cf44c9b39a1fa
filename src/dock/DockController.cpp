#include "dock/DockController.h"

#include <QGuiApplication>
#include <QWindow>
#include <QtMath>
#include <cstdio>
#include <utility>

#include "base/DomainError.h"
#include "desktop/ClientWindows.h"
#include "desktop/FrameClock.h"
#include "desktop/MotionPreference.h"
#include "desktop/Zones.h"
#include "dock/DockContentContainer.h"
#include "dock/rules/DesktopMath.h"
#include "store/AppStore.h"
#include "store/Services.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

std::optional<QPointF> savedPlace(const DockConfiguration& config, const QString& display) {
  const auto place = config.floatingPositions.constFind(display);
  if (place == config.floatingPositions.constEnd() || place->size() != 2) return std::nullopt;
  return QPointF(place->at(0), place->at(1));
}

bool standsOnTop(const DockConfiguration& config) {
  return config.layout == DockLayout::RevealTop || (config.layout == DockLayout::Fixed && config.position == "top"_L1);
}

/// The recovery file stays, and the next start tries again; no message line is left to say so.
void sayAtTheEnd(const std::exception& failure) { std::fprintf(stderr, "%s\n", failure.what()); }

}  // namespace

DockController::DockController(AppStore& store, const Services& services, DockPreferenceAccess& preferences,
                               DockGuard& guard, ContentFactory factory)
    : store_(store),
      services_(services),
      suppressor_(store.dataDirectory(), preferences, guard, {.asksFirst = true}),
      shownRemarks_(store.dataDirectory()),
      factory_(std::move(factory)) {
  connect(&services_.screens, &Screens::changed, this, &DockController::refresh);
  connect(&services_.panels, &Panels::compositingChanged, this, &DockController::refresh);
  connect(&services_.zones, &ZoneSensor::changed, this, &DockController::checkEdge);
  connect(&services_.zones, &ZoneSensor::edgePressed, this, &DockController::revealAtOnce);
  connect(&services_.motion, &MotionPreference::changed, this, &DockController::refresh);
  connect(&store_, &AppStore::runningAppsChanged, this, [this] {
    if (store_.config().liveApps) refresh();
  });
  connect(&services_.windows, &ClientWindows::changed, this, &DockController::platformStateChanged);
  connect(&services_.windows, &ClientWindows::framesChanged, this, &DockController::platformStateChanged);
  connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &DockController::followKeyboard);
  suppressor_.setNeedsApply([this] { refresh(); });
  platformStateChanged();
}

DockController::~DockController() { shutdown(); }

/// What the user wants stays in the document, for a session under another desktop.
DockLayout DockController::possibleLayout() const {
  return services_.zones.edges() ? store_.config().layout : DockLayout::Fixed;
}

const DockConfiguration& DockController::settings() const {
  const DockLayout layout = possibleLayout();
  if (layout == store_.config().layout) return store_.config();
  limited_ = store_.config();
  limited_.layout = layout;
  return limited_;
}

void DockController::refresh() {
  if (down_) return;
  refreshWork_ = store_.scheduler().after(kRefreshDelay, [this] { layoutPanels(); });
}

DockToggle::Step DockController::nextToggle() const {
  QList<DockToggle::Dock> docks;
  for (const auto& [id, dock] : docks_) docks.append({dock.visibility.visible || dock.peep, dock.covered});
  return DockToggle::next(manuallyHidden_, possibleLayout(), docks);
}

void DockController::toggle() { nextToggle() == DockToggle::Step::Hide ? hideByHand() : show(); }

void DockController::show() {
  const double now = store_.scheduler().reference();
  for (auto& [id, dock] : docks_) {
    if (dock.covered || !DockVisibility::reveals(possibleLayout())) continue;
    dock.visibility = DockVisibility::calledAt(now);
    applyShape(dock);
  }
  // The next pass puts the panels back on the screen.
  if (std::exchange(manuallyHidden_, false)) return refresh();
  checkEdge();
}

void DockController::hideByHand() {
  manuallyHidden_ = true;
  leaveKeyboard();
  setShown(false);
  endPeeps();
  transitionTimer_.reset();
  updateZones();
  for (const QString& display : displays()) Q_EMIT goesAway(display);
}

void DockController::setMayShow(bool mayShow) {
  if (mayShow_ == mayShow || down_) return;
  mayShow_ = mayShow;
  if (mayShow_) {
    // The first picture need not wait for a burst of changes to settle.
    layoutPanels();
  } else {
    setShown(false);
    transitionTimer_.reset();
  }
}

void DockController::shutdown() {
  if (down_) return;
  down_ = true;
  transitionTimer_.reset();
  refreshWork_.reset();
  othersAreAtIt_.reset();
  updateZones();
  try {
    suppressor_.restore();
  } catch (const DomainError& failure) {
    store_.setError(failure.message());
    sayAtTheEnd(failure);
  }
  store_.restoreReservations();
  removeDocks([](const QString&) { return true; });
}

void DockController::giveBack() noexcept {
  try {
    suppressor_.restore();
  } catch (const std::exception& failure) {
    sayAtTheEnd(failure);
  }
}

void DockController::removeDocks(const std::function<bool(const QString&)>& isDoomed) {
  for (auto dock = docks_.begin(); dock != docks_.end();) {
    if (!isDoomed(dock->first)) {
      ++dock;
      continue;
    }
    if (focused_ == dock->first) focused_.clear();
    finishMove(dock->first);
    Q_EMIT goesAway(dock->first);
    // Out of the list before it goes: what its window says at its end may ask for it.
    const auto going = docks_.extract(dock++);
  }
}

void DockController::restoreSystemDock() {
  try {
    suppressor_.restore();
    failure_.second.clear();
    store_.setError(tr("The macOS Dock settings have been restored."));
  } catch (const DomainError& failure) {
    store_.setError(failure.message());
  }
}

bool DockController::giveSystemDockBack() {
  if (!suppressor_.original()) return false;
  suppressor_.restoreUntilChanged(settings().layout);
  failure_.second.clear();
  store_.setError(tr("The macOS Dock settings have been restored."));
  return true;
}

// --- Layout ---------------------------------------------------------------------------------------------------------

void DockController::layoutPanels() {
  const QList<Screen> screens = services_.screens.all();
  rememberDisplays(screens);
  refreshWork_.reset();  // What that changed is part of this pass.
  QStringList connected;
  for (const Screen& screen : screens) connected << screen.id;
  const DockConfiguration& config = settings();
  const QStringList selected = DesktopMath::selectedDisplays(
      config.display, connected, config.desktopOptions().attachedDisplays, services_.screens.mainId());

  const bool reserves = config.desktopOptions().reserveSpace;
  const std::optional<DockLayout> reserved = reserves ? std::optional(config.layout) : std::nullopt;
  if (reservedLayout_ && reservedLayout_ != reserved) {
    store_.restoreReservations();
  }
  reservedLayout_ = reserved;
  removeDocks([&](const QString& id) { return !selected.contains(id); });
  applyToSystemDock();
  sayWhatIsNotAvailable();
  for (const Screen& screen : screens) {
    if (selected.contains(screen.id)) layout(screen);
  }
  hasStarted_ = true;
  updateZones();
  platformStateChanged();
  checkEdge();
}

void DockController::rememberDisplays(const QList<Screen>& screens) {
  const DockConfiguration& config = store_.config();
  DockConfiguration wanted = DesktopMath::migrated(config, screens).value_or(config);
  DesktopOptions& options = wanted.desktop;
  options.attachedDisplays = DesktopMath::remembered(options.attachedDisplays, screens);
  for (const Screen& screen : screens) options.displayNames.insert(screen.id, screen.name);
  if (options == config.desktop && wanted.display == config.display &&
      wanted.floatingPositions == config.floatingPositions) {
    return;
  }
  store_.edit([&](DockConfiguration& stored) { stored = wanted; });
}

void DockController::sayWhatIsNotAvailable() {
  const Capability edges = services_.zones.edges();
  if (edges || store_.config().layout == DockLayout::Fixed || std::exchange(saidWhatIsNot_, true)) return;
  remark(edges.reason);
}

/// A remark to a user who has just chosen a layout stays until it was seen. A start shows only what no earlier one
/// did, and for a while.
void DockController::remark(const QString& sentence) {
  if (!hasStarted_ && shownRemarks_.contains(sentence)) return;
  shownRemarks_.add(sentence);
  store_.setError(sentence);
  remarkEnd_.reset();
  if (hasStarted_) return;
  remarkEnd_ = store_.scheduler().after(kRemark, [this, sentence] {
    if (store_.error() == sentence) store_.clearError();
  });
}

void DockController::applyToSystemDock() {
  const DockLayout layout = possibleLayout();
  try {
    suppressor_.apply(layout);
    failure_.second.clear();
    if (const auto notice = suppressor_.takeNotice()) remark(*notice);
  } catch (const DomainError& failure) {
    // Every pass tries again, but a message that was dismissed stays dismissed.
    const std::pair said(layout, failure.message());
    if (std::exchange(failure_, said) != said) store_.setError(failure.message());
    if (suppressor_.othersAreAtIt()) othersAreAtIt_ = store_.scheduler().after(kOthersAreAtIt, [this] { refresh(); });
  }
}

void DockController::layout(const Screen& screen) {
  const DockConfiguration& config = settings();
  const int apps = config.liveApps ? static_cast<int>(store_.unpinnedRunningApps(screen.id).size()) : 0;
  const DockPlacement::Row row = DockPlacement::row(store_.displayedWidgets(screen.id), apps);

  Dock& dock = dockFor(screen);
  const double width = screen.usable.width();
  const double least = dock.content->leastWidth(DockPlacement::size(config, row, width).scale);
  const DockPlacement::Size size = DockPlacement::size(config, row, width, least);
  dock.screen = screen;
  const std::optional<QPointF> floating = dock.dragged ? dock.dragged : savedPlace(config, screen.id);
  dock.frame = DockPlacement::place(config, size.panel, screen.frame, screen.usable, floating, dock.beside);
  dock.geometry = {screen.id,
                   dock.frame.size(),
                   size.scale,
                   services_.panels.isComposited(),
                   services_.panels.canBlur(),
                   DockPlacement::hangs(config, dock.frame, screen.usable),
                   config.layout == DockLayout::Floating};
  dock.container->setReduceMotion(services_.motion.reducesMotion());
  dock.container->configure(dock.geometry);
  place(dock);
  standClear(dock);
  applyShape(dock);
  reserveSpace(dock);
  dock.panel->setHiddenFromCapture(config.desktopOptions().hideFromScreenCapture);
  dock.panel->setShown(mayShow_ && !manuallyHidden_);
}

DockController::Dock& DockController::dockFor(const Screen& screen) {
  Dock& dock = docks_[screen.id];
  if (dock.panel) return dock;
  std::unique_ptr<DockContent> content = factory_(screen.id);
  dock.content = content.get();
  auto container = std::make_unique<DockContentContainer>(std::move(content), services_.clocks.make(screen.id));
  dock.container = container.get();
  dock.panel = services_.panels.make(std::move(container));
  connectDock(dock, screen.id);
  return dock;
}

void DockController::connectDock(const Dock& dock, const QString& id) {
  connect(dock.container, &DockContent::shapeChanged, this, [this, id] {
    if (const auto found = docks_.find(id); found != docks_.end()) {
      if (standClear(found->second)) updateZones();
      applyShape(found->second);
    }
  });
  connect(dock.content, &DockContent::leastWidthChanged, this, [this, id] {
    const auto found = docks_.find(id);
    if (found == docks_.end()) return;
    layout(Screen(found->second.screen));
    updateZones();
  });
  connect(dock.container, &DockContentContainer::pointerLeft, &services_.zones, &ZoneSensor::pointerLeft);
  // The window system took the window: the next pass makes a new one if the display is still there.
  connect(dock.panel.get(), &Panel::closed, this, [this, id] {
    const auto remove = [this, id] {
      removeDocks([&](const QString& gone) { return gone == id; });
      refresh();
    };
    QMetaObject::invokeMethod(this, remove, Qt::QueuedConnection);
  });
}

/// The window stands still and holds the slot with the content's margins, cut at the screen's edges. Where the dock
/// hides, the window reaches to its edge, so that the content can slide out of sight within it.
void DockController::place(Dock& dock) {
  const DockConfiguration& config = settings();
  const QRectF slot = dock.frame.translated(-dock.screen.frame.topLeft());
  const bool top = standsOnTop(config);
  const QSize size(qCeil(slot.width()), qCeil(slot.height()));
  // What is rounded up goes inwards, or the glass would be cut at the screen's edge.
  const bool right = slot.center().x() > dock.screen.frame.width() / 2 + 1;
  const QPoint corner(right ? qRound(slot.right()) - size.width() : qRound(slot.left()),
                      top ? qRound(slot.top()) : qRound(slot.bottom()) - size.height());
  const QRect rectangle(corner, size);
  const QMargins wanted = dock.content->margins();
  const int above = rectangle.top();
  const int below = qRound(dock.screen.frame.height()) - rectangle.bottom() - 1;
  QMargins margins = wanted;
  margins.setLeft(std::min(wanted.left(), rectangle.left()));
  margins.setRight(std::min(wanted.right(), qRound(dock.screen.frame.width()) - rectangle.right() - 1));
  margins.setTop(std::min(wanted.top(), above));
  margins.setBottom(std::min(wanted.bottom(), below));
  const bool hides = DockVisibility::hides(config.layout);
  if (hides) top ? margins.setTop(above) : margins.setBottom(below);

  const QPoint origin(margins.left() - wanted.left(), margins.top() - wanted.top());
  dock.container->setRestingFrame(QRect(origin, size.grownBy(wanted)));
  dock.container->setTravel(hides ? slot.height() : 0, !top);

  const PanelPlacement placement{dock.screen.id, rectangle, margins};
  if (placement == dock.placement) return;
  dock.placement = placement;
  dock.panel->place(placement);
  if (!dock.dragged) Q_EMIT placed(dock.screen.id);
}

/// The glass is as wide as its contents, which only the content knows.
bool DockController::standClear(Dock& dock) {
  if (!dock.screen.frame.isValid() || dock.content->size().isEmpty()) return false;
  const QRect glass = dock.content->inputRegion().boundingRect();
  if (glass.isEmpty()) return false;
  const QMargins margins = dock.content->margins();
  const int right = dock.content->width() - margins.right() - glass.left() - glass.width();
  const QMarginsF beside(std::max(0, glass.left() - margins.left()), 0, std::max(0, right), 0);
  if (std::exchange(dock.beside, beside) == beside) return false;
  const Screen& screen = dock.screen;
  const std::optional<QPointF> floating = dock.dragged ? dock.dragged : savedPlace(settings(), screen.id);
  dock.frame = DockPlacement::place(settings(), dock.frame.size(), screen.frame, screen.usable, floating, dock.beside);
  place(dock);
  return true;
}

void DockController::applyShape(Dock& dock) {
  const QRegion outline = dock.container->outline();
  dock.panel->setOutline(outline);
  dock.panel->setInputRegion(dock.visibility.visible ? dock.container->inputRegion() : QRegion());
  dock.panel->setBlurBehind(dock.geometry.blurred && (dock.visibility.visible || dock.peep) ? outline : QRegion());
}

void DockController::reserveSpace(Dock& dock) {
  const DockConfiguration& config = settings();
  const bool top = standsOnTop(config);
  const QRectF glass = restingGlass(dock);
  const double inner = top ? glass.bottom() - dock.screen.frame.top() : dock.screen.frame.bottom() - glass.top();
  dock.panel->reserve(top ? Edge::Top : Edge::Bottom, reserves(dock) ? qCeil(inner) : 0);
}

bool DockController::reserves(const Dock& dock) const {
  const DockConfiguration& config = settings();
  const bool owns = config.layout == DockLayout::Fixed || config.layout == DockLayout::Replace;
  return owns && config.desktopOptions().reserveSpace && mayShow_ && !manuallyHidden_ && !dock.frame.isEmpty();
}

/// In desktop coordinates, wherever it is seen now.
QRectF DockController::restingGlass(const Dock& dock) {
  return DockPlacement::atRest(dock.frame.marginsRemoved(dock.beside), dock.geometry.scale, dock.geometry.atTop);
}

void DockController::setShown(bool shown) {
  for (auto& [id, dock] : docks_) {
    dock.panel->setShown(shown);
    reserveSpace(dock);
  }
}

// --- Moving a floating dock -----------------------------------------------------------------------------------------

void DockController::moveBy(const QString& display, const QPointF& delta) {
  const auto found = docks_.find(display);
  if (found == docks_.end() || possibleLayout() != DockLayout::Floating) return;
  Dock& dock = found->second;
  const Screen& screen = dock.screen;
  // A pointer that goes on beyond the edge finds the dock under it again when it comes back.
  dock.dragged = dock.dragged.value_or(dock.frame.topLeft() - screen.frame.topLeft()) + delta;
  dock.frame =
      DockPlacement::place(settings(), dock.frame.size(), screen.frame, screen.usable, dock.dragged, dock.beside);
  const bool hangs = DockPlacement::hangs(settings(), dock.frame, screen.usable);
  if (std::exchange(dock.geometry.atTop, hangs) != hangs) dock.container->configure(dock.geometry);
  place(dock);
}

void DockController::finishMove(const QString& display) {
  const auto found = docks_.find(display);
  if (found == docks_.end() || !std::exchange(found->second.dragged, std::nullopt)) return;
  if (possibleLayout() != DockLayout::Floating || down_) return;
  const QPointF place = found->second.frame.topLeft() - found->second.screen.frame.topLeft();
  store_.edit([&](DockConfiguration& config) { config.floatingPositions.insert(display, {place.x(), place.y()}); });
  Q_EMIT placed(display);
}

// --- What others ask ------------------------------------------------------------------------------------------------

QStringList DockController::displays() const {
  QStringList ids;
  for (const auto& [id, dock] : docks_) ids << id;
  return ids;
}

QRectF DockController::frame(const QString& display) const {
  const auto dock = docks_.find(display);
  return dock == docks_.end() ? QRectF() : dock->second.frame;
}

Panel* DockController::panel(const QString& display) const {
  const auto dock = docks_.find(display);
  return dock == docks_.end() ? nullptr : dock->second.panel.get();
}

DockContent* DockController::content(const QString& display) const {
  const auto dock = docks_.find(display);
  return dock == docks_.end() ? nullptr : dock->second.content;
}

QPointF DockController::contentOrigin(const QString& display) const {
  const auto found = docks_.find(display);
  if (found == docks_.end()) return {};
  const Dock& dock = found->second;
  const QMargins& margins = dock.placement.margins;
  const QPoint window = dock.placement.rectangle.topLeft() - QPoint(margins.left(), margins.top());
  return dock.screen.frame.topLeft() + window + dock.container->restingFrame().topLeft();
}

QRect DockController::mapFromContent(const QString& display, const QRect& rectangle) const {
  const auto found = docks_.find(display);
  return found == docks_.end() ? rectangle : rectangle.translated(found->second.container->restingFrame().topLeft());
}

bool DockController::isVisible(const QString& display) const {
  const auto dock = docks_.find(display);
  return dock != docks_.end() && dock->second.visibility.visible && dock->second.panel->isShown();
}

bool DockController::isPeeping(const QString& display) const {
  const auto dock = docks_.find(display);
  return dock != docks_.end() && dock->second.peep;
}

bool DockController::isCovered(const QString& display) const {
  const auto dock = docks_.find(display);
  return dock != docks_.end() && dock->second.covered;
}

}  // namespace tarnwick
