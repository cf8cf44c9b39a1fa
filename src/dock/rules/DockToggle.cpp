#include "dock/rules/DockToggle.h"

#include <algorithm>

#include "dock/rules/DockVisibility.h"

namespace tarnwick {

DockToggle::Step DockToggle::next(bool hiddenByHand, DockLayout layout, const QList<Dock>& docks) {
  if (hiddenByHand) return Step::Show;
  if (!DockVisibility::reveals(layout) || std::ranges::any_of(docks, &Dock::seen)) return Step::Hide;
  const bool canCome = std::ranges::any_of(docks, [](const Dock& dock) { return !dock.covered; });
  return canCome ? Step::Show : Step::Hide;
}

}  // namespace tarnwick
