#include "dock/rules/DockVisibility.h"

namespace tarnwick {
namespace {

using Surroundings = DockVisibility::Surroundings;

DockVisibility revealedAtEdge(DockVisibility state, const Surroundings& around, double now) {
  state.edgeSince = state.edgeSince.value_or(now);
  if (now - *state.edgeSince >= around.showDelay) {
    state.visible = true;
    state.lastInteraction = now;
    state.called = false;
  } else if (state.visible && around.interacting) {
    state.lastInteraction = now;
    state.called = false;
  }
  return state;
}

DockVisibility revealedAwayFromEdge(DockVisibility state, const Surroundings& around, double now) {
  state.edgeSince.reset();
  if (!state.visible) return state;
  if (around.interacting) {
    state.lastInteraction = now;
    state.called = false;
  } else if (!state.called) {
    state.visible = state.lastInteraction && now - *state.lastInteraction < around.hideDelay;
  }
  return state;
}

}  // namespace

bool DockVisibility::reveals(DockLayout layout) {
  switch (layout) {
    case DockLayout::RevealBottom:
    case DockLayout::RevealTop:
    case DockLayout::ReplaceAutoHide:
      return true;
    case DockLayout::Swap:
    case DockLayout::Fixed:
    case DockLayout::Replace:
    case DockLayout::Floating:
      return false;
  }
  return false;
}

bool DockVisibility::atEdge(DockLayout layout, const PointerZones& zones) {
  return layout == DockLayout::RevealTop ? zones.topEdge : zones.bottomEdge;
}

DockVisibility DockVisibility::next(const DockVisibility& old, const Surroundings& around, double now) {
  if (around.covered) return {};
  if (reveals(around.layout)) {
    if (around.free) return {true, {}, {}, true};
    // The delay is for a pointer that leaves; a window that comes finds the place empty.
    DockVisibility state = old.free && !around.interacting ? DockVisibility() : old;
    state.free = false;
    return around.atEdge ? revealedAtEdge(state, around, now) : revealedAwayFromEdge(state, around, now);
  }
  DockVisibility state = old;
  state.called = false;
  state.visible = around.layout != DockLayout::Swap || !around.atEdge;
  return state;
}

bool DockVisibility::needsTimer(const Surroundings& around) const {
  if (around.covered || around.free || !reveals(around.layout)) return false;
  return around.atEdge ? !visible : visible && !around.interacting && !called;
}

}  // namespace tarnwick
