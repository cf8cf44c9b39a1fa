// The part of the controller that decides from moment to moment whether docks are shown.
#include <utility>

#include "base/DomainError.h"
#include "desktop/ClientWindows.h"
#include "desktop/Zones.h"
#include "dock/DockContentContainer.h"
#include "dock/DockController.h"
#include "dock/rules/DesktopMath.h"
#include "store/AppStore.h"
#include "store/Services.h"

namespace tarnwick {
namespace {

/// How far the system's dock may be off the screen's edge and still be the one at the bottom.
constexpr double kAtTheEdge = 16;

}  // namespace

void DockController::updateZones() {
  QList<ZoneRequest> requests;
  const DockLayout layout = possibleLayout();
  if (!manuallyHidden_ && !down_ && DockVisibility::hides(layout)) {
    const double trigger = store_.config().desktop.triggerSize;
    for (auto& [id, dock] : docks_) {
      // Nothing comes there, and to watch an edge may cost its windows clicks.
      if (dock.covered) continue;
      const bool top = layout == DockLayout::RevealTop;
      dock.systemDock = systemDockAt(dock);
      requests.append({id, dock.frame, trigger, top, !top, dock.systemDock});
    }
  }
  services_.zones.watch(requests);
  // Where windows are costs something only while a dock asks for it.
  const bool dodges = !manuallyHidden_ && !down_ && !docks_.empty() && dodge() != DockDodge::Mode::Off;
  services_.windows.watchFrames(dodges);
}

/// Which windows docks make room for, where the layout hides them and the desktop tells where windows are.
DockDodge::Mode DockController::dodge() const {
  if (!DockVisibility::reveals(possibleLayout()) || !services_.windows.frames()) {
    return DockDodge::Mode::Off;
  }
  return DockDodge::named(store_.config().desk().dodge);
}

bool DockController::isFree(const Dock& dock) const {
  const DockDodge::Mode mode = dodge();
  return mode != DockDodge::Mode::Off &&
         !DockDodge::covers(mode, services_.windows.all(), restingGlass(dock), dock.screen.frame);
}

/// While the system's dock is out in our place, all of it counts as the edge; else ours would come back over it as soon
/// as the pointer rises to its icons.
QRectF DockController::systemDockAt(const Dock& dock) const {
  QRectF place;
  if (possibleLayout() != DockLayout::Swap || dock.visibility.visible) return place;
  const QRectF screen = dock.screen.frame;
  for (const ClientWindow& window : services_.windows.all()) {
    const bool isAtTheBottom = window.dock && window.frame.intersects(screen) &&
                               std::abs(window.frame.bottom() - screen.bottom()) <= kAtTheEdge &&
                               window.frame.height() < screen.height() / 2;
    if (!isAtTheBottom) continue;
    // What it leaves free below itself is no way out of it.
    QRectF reached = window.frame;
    reached.setBottom(screen.bottom());
    place |= reached;
  }
  return place;
}

/// It may come out only when ours has gone, and grow while it is out.
bool DockController::systemDockMoved() const {
  if (manuallyHidden_ || down_ || possibleLayout() != DockLayout::Swap) return false;
  return std::ranges::any_of(docks_,
                             [this](const auto& each) { return systemDockAt(each.second) != each.second.systemDock; });
}

DockVisibility::Surroundings DockController::surroundings(const Dock& dock) const {
  const DockLayout layout = possibleLayout();
  const DesktopOptions& options = store_.config().desktop;
  const PointerZones zones = services_.zones.zones(dock.screen.id);
  // A dock that has the keyboard was asked for by name: hidden, it would swallow what is typed.
  const bool isFocused = focused_ == dock.screen.id;
  DockVisibility::Surroundings around;
  around.layout = layout;
  around.covered = dock.covered;
  around.atEdge = !isFocused && DockVisibility::atEdge(layout, zones);
  around.interacting = zones.inside || isFocused || (hasActivePanel && hasActivePanel(dock.screen.id)) ||
                       (hasOpenWindow && hasOpenWindow());
  around.showDelay = dock.peep ? 0 : options.revealShowDelay;
  around.hideDelay = options.revealHideDelay;
  around.free = isFree(dock);
  return around;
}

void DockController::checkEdge() {
  // What had borrowed the keyboard is gone. It gives it back, or another window has it by now.
  if (keyboardIsLent_ && !(hasActivePanel && hasActivePanel(focused_))) {
    keyboardIsLent_ = false;
    waitForKeyboard();
  }
  if (manuallyHidden_ || down_) return;
  const double now = store_.scheduler().reference();
  bool needsTimer = false;
  bool swapped = false;
  QStringList gone;
  const QStringList coverChanged = updateCovered();
  if (!coverChanged.isEmpty()) updateZones();
  for (auto& [id, dock] : docks_) {
    const DockVisibility::Surroundings around = surroundings(dock);
    const bool wasVisible = dock.visibility.visible;
    const bool wasPeeping = dock.peep != nullptr;
    // Nothing is checked while the pointer rests, so use lasts until the next check finds it ended.
    if (dock.inUse && wasVisible && DockVisibility::reveals(around.layout)) dock.visibility.lastInteraction = now;
    dock.inUse = around.atEdge || around.interacting;
    dock.visibility = DockVisibility::next(dock.visibility, around, now);
    // A window above another keeps that one from being shown without the compositor, seen or not.
    dock.panel->setAboveFullscreen(!around.covered);
    needsTimer = needsTimer || dock.visibility.needsTimer(around);
    if (wasPeeping && (dock.visibility.visible || isUnderFullscreen(dock))) dock.peep.reset();
    dock.container->animate(dock.visibility.visible || dock.peep ? 1 : 0, !dock.isFresh);
    if (dock.isFresh || dock.visibility.visible != wasVisible || dock.peep || wasPeeping) applyShape(dock);
    swapped = swapped || dock.visibility.visible != wasVisible;
    dock.isFresh = false;
    if (wasVisible && !dock.visibility.visible) gone << id;
  }
  setTransitionTimer(needsTimer);
  // The edge of a dock that gave way is another one than its own.
  if (swapped && possibleLayout() == DockLayout::Swap) updateZones();
  // Last of all: what goes with them may have this look again.
  for (const QString& id : gone) Q_EMIT goesAway(id);
  for (const QString& id : coverChanged) Q_EMIT coveredChanged(id);
}

/// Gives the displays for which it is different.
QStringList DockController::updateCovered() {
  QStringList changed;
  for (auto& [id, dock] : docks_) {
    // One that has the keyboard was asked for by name.
    const bool covered = focused_ != id && isCovered(dock.screen);
    if (std::exchange(dock.covered, covered) != covered) changed << id;
  }
  return changed;
}

void DockController::setTransitionTimer(bool runs) {
  if (!runs) {
    transitionTimer_.reset();
  } else if (!transitionTimer_) {
    transitionTimer_ = store_.scheduler().every(kTransitionPeriod, [this] { checkEdge(); });
  }
}

void DockController::peep(const QString& display) {
  const auto found = docks_.find(display);
  if (manuallyHidden_ || down_ || !mayShow_ || found == docks_.end() || !store_.config().desk().peep) return;
  Dock& dock = found->second;
  if (!DockVisibility::reveals(possibleLayout()) || dock.visibility.visible || isUnderFullscreen(dock)) return;
  dock.peep = store_.scheduler().after(kPeep, [this, display] { endPeep(display); });
  checkEdge();
}

void DockController::endPeep(const QString& display) {
  const auto found = docks_.find(display);
  if (found == docks_.end()) return;
  // The job that may have asked for this ends here, and `display` with it.
  found->second.peep.reset();
  applyShape(found->second);
  checkEdge();
}

void DockController::endPeeps() {
  for (auto& [id, dock] : docks_) {
    if (!dock.peep) continue;
    dock.peep.reset();
    dock.container->animate(0, false);
    applyShape(dock);
  }
}

/// Where windows fill their screens, whether docks are to hide from them or not.
QList<QRectF> DockController::fullscreenFrames() const {
  QList<QRectF> frames;
  for (const ClientWindow& window : services_.windows.all()) {
    if (window.fullscreen && !window.minimised && !window.elsewhere) frames.append(window.frame);
  }
  return frames;
}

bool DockController::isUnderFullscreen(const Dock& dock) const {
  return std::ranges::any_of(fullscreenFrames(),
                             [&dock](const QRectF& frame) { return DesktopMath::covers(frame, dock.screen.frame); });
}

bool DockController::isCovered(const Screen& screen) const {
  return std::ranges::any_of(fullscreen_,
                             [&](const QRectF& frame) { return DesktopMath::covers(frame, screen.frame); });
}

void DockController::platformStateChanged() {
  const QList<QRectF> frames = store_.config().desktop.hideDuringFullscreen ? fullscreenFrames() : QList<QRectF>();
  const bool moved = systemDockMoved();
  if (moved) updateZones();
  const bool isOtherwise = std::ranges::any_of(docks_, [this](const auto& each) {
    const Dock& dock = each.second;
    return (!dock.covered && isFree(dock) != dock.visibility.free) || (dock.peep && isUnderFullscreen(dock));
  });
  if (std::exchange(fullscreen_, frames) != frames || moved || isOtherwise) checkEdge();
  keepWindowsClear();
}

/// Loose windows: what is maximised or comes new the window manager keeps clear by itself.
void DockController::keepWindowsClear() {
  QList<ReservingDock> reserving;
  for (const auto& [id, dock] : docks_)
    if (reserves(dock)) reserving.append({restingGlass(dock), dock.screen});
  if (!reserving.isEmpty()) store_.reserve(reserving);
}

/// Without the delay: who presses at the edge has come for the dock.
void DockController::revealAtOnce(const QString& display) {
  const auto found = docks_.find(display);
  if (found != docks_.end() && DockVisibility::reveals(possibleLayout())) {
    found->second.visibility.visible = true;
    found->second.visibility.lastInteraction = store_.scheduler().reference();
    // One that fades without motion keeps its shape, and takes clicks again.
    applyShape(found->second);
  }
  checkEdge();
}

void DockController::focus() {
  if (std::exchange(manuallyHidden_, false)) refresh();
  const QString main = services_.screens.mainId();
  const auto found = docks_.contains(main) ? docks_.find(main) : docks_.begin();
  if (found == docks_.end()) return;
  // Asked again while the dock has it: back to the program that had it.
  if (focused_ == found->first && hasKeyboard_ && !keyboardIsLent_) {
    leaveKeyboard();
    return;
  }
  if (focused_ != found->first) leaveKeyboard();
  focused_ = found->first;
  // The user asked for it by name, not by resting at the edge.
  revealAtOnce(focused_);
  found->second.panel->setKeyboard(Keyboard::Exclusive);
  found->second.container->focusContent();
}

void DockController::leaveKeyboard() {
  const auto found = docks_.find(focused_);
  focused_.clear();
  hasKeyboard_ = false;
  keyboardIsLent_ = false;
  keyboardWork_.reset();
  if (found != docks_.end()) found->second.panel->setKeyboard(Keyboard::None);
  checkEdge();
}

/// A click on another window takes the keyboard without notifying the dock, which must not stay out for it. One of the
/// dock's own panels borrows it only.
void DockController::followKeyboard(const QWindow* window) {
  const auto found = docks_.find(focused_);
  if (found == docks_.end()) return;
  if (window && window == found->second.container->windowHandle()) {
    hasKeyboard_ = true;
    keyboardIsLent_ = false;
    keyboardWork_.reset();
  } else if (hasKeyboard_) {
    waitForKeyboard();
  }
}

void DockController::waitForKeyboard() {
  keyboardWork_ = store_.scheduler().after(kKeyboardGrace, [this] {
    keyboardIsLent_ = hasActivePanel && hasActivePanel(focused_);
    if (!keyboardIsLent_) leaveKeyboard();
  });
}

}  // namespace tarnwick
