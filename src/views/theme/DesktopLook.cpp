#include "views/theme/DesktopLook.h"

namespace tarnwick {

namespace {

DesktopLook& current() {
  static DesktopLook look;
  return look;
}

}  // namespace

const DesktopLook& DesktopLook::now() { return current(); }

void DesktopLook::set(const DesktopLook& look) { current() = look; }

DockStyle shownStyle(const DockConfiguration& config) {
  const DeskOptions desk = config.desk();
  const std::optional<bool>& dark = DesktopLook::now().dark;
  if (!desk.styleFollows || !dark) return dockStyleNamed(config.style);
  return dockStyleNamed(*dark ? desk.darkStyle : desk.lightStyle);
}

}  // namespace tarnwick
