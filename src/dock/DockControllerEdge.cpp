// The part of the controller that decides from moment to moment whether docks are shown.
#include "base/DomainError.h"
#include "dock/DockContentContainer.h"
#include "dock/DockController.h"
#include "dock/rules/DesktopMath.h"
#include "dock/rules/MotionStyle.h"
#include "store/AppStore.h"

namespace tarnwick {

void DockController::updateZones() {
  QList<ZoneRequest> requests;
  if (!manuallyHidden_ && !down_ && DockVisibility::hides(store_.config().layout)) {
    const double trigger = store_.config().desktopOptions().triggerSize;
    for (const auto& [id, dock] : docks_) requests.append({id, dock.frame, trigger});
  }
  ports_.zones->watch(requests);
}

DockVisibility::Surroundings DockController::surroundings(const Dock& dock) const {
  const DockConfiguration& config = store_.config();
  const DesktopOptions options = config.desktopOptions();
  const PointerZones zones = ports_.zones->zones(dock.screen.id);
  DockVisibility::Surroundings around;
  around.layout = config.layout;
  around.covered = isCovered(dock.screen);
  around.atEdge = DockVisibility::atEdge(config.layout, zones);
  around.interacting = zones.inside || focused_ == dock.screen.id || (hasActivePanel && hasActivePanel(dock.screen.id));
  around.showDelay = options.revealShowDelay;
  around.hideDelay = options.revealHideDelay;
  return around;
}

void DockController::checkEdge() {
  if (manuallyHidden_ || down_) return;
  const double now = store_.scheduler().reference();
  bool needsTimer = false;
  for (auto& [id, dock] : docks_) {
    const DockVisibility::Surroundings around = surroundings(dock);
    const bool wasVisible = dock.visibility.visible;
    dock.visibility = DockVisibility::next(dock.visibility, around, now);
    needsTimer = needsTimer || dock.visibility.needsTimer(around);
    dock.container->animate(dock.visibility.visible ? 1 : 0, !dock.isFresh);
    if (dock.isFresh || dock.visibility.visible != wasVisible) applyShape(dock);
    dock.isFresh = false;
  }
  setTransitionTimer(needsTimer);
}

void DockController::setTransitionTimer(bool runs) {
  if (!runs) {
    transitionTimer_.reset();
  } else if (!transitionTimer_) {
    transitionTimer_ = store_.scheduler().every(kTransitionPeriod, [this] { checkEdge(); });
  }
}

bool DockController::isCovered(const Screen& screen) const {
  return std::ranges::any_of(fullscreen_,
                             [&](const QRectF& frame) { return DesktopMath::covers(frame, screen.frame); });
}

void DockController::platformStateChanged() {
  QList<QRectF> frames;
  if (ports_.windows && store_.config().desktopOptions().hideDuringFullscreen) {
    for (const ClientWindow& window : ports_.windows->all()) {
      if (window.fullscreen && !window.minimised) frames.append(window.frame);
    }
  }
  if (frames == fullscreen_) return;
  fullscreen_ = frames;
  checkEdge();
}

void DockController::focus() {
  if (manuallyHidden_) toggle();
  const QString main = ports_.screens->mainId();
  const auto found = docks_.contains(main) ? docks_.find(main) : docks_.begin();
  if (found == docks_.end()) return;
  focused_ = found->first;
  // A hidden dock comes at once: the user asked for it by name, not by resting at the edge.
  if (DockVisibility::reveals(store_.config().layout)) {
    found->second.visibility.visible = true;
    found->second.visibility.lastInteraction = store_.scheduler().reference();
  }
  checkEdge();
  found->second.panel->setKeyboard(Keyboard::Exclusive);
  found->second.content->setFocus(Qt::ShortcutFocusReason);
}

void DockController::leaveKeyboard() {
  const auto found = docks_.find(focused_);
  focused_.clear();
  if (found != docks_.end()) found->second.panel->setKeyboard(Keyboard::None);
  checkEdge();
}

}  // namespace tarnwick
