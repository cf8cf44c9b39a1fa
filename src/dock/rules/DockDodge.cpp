#include "dock/rules/DockDodge.h"

#include <algorithm>

namespace tarnwick {
namespace {

bool counts(DockDodge::Mode mode, const ClientWindow& window) {
  if (window.minimised || window.elsewhere || window.dock || window.desktop) return false;
  switch (mode) {
    case DockDodge::Mode::Off:
      return false;
    case DockDodge::Mode::Any:
      return true;
    case DockDodge::Mode::Active:
      return window.active;
    case DockDodge::Mode::Maximised:
      return window.maximised || window.fullscreen;
  }
  return false;
}

}  // namespace

DockDodge::Mode DockDodge::named(const QString& name) {
  if (name == QLatin1String("any")) return Mode::Any;
  if (name == QLatin1String("active")) return Mode::Active;
  return name == QLatin1String("maximised") ? Mode::Maximised : Mode::Off;
}

bool DockDodge::covers(Mode mode, const QList<ClientWindow>& windows, const QRectF& glass, const QRectF& screen) {
  const QRectF place = glass.adjusted(-kMargin, -kMargin, kMargin, kMargin) & screen;
  return std::ranges::any_of(
      windows, [&](const ClientWindow& window) { return counts(mode, window) && window.frame.intersects(place); });
}

}  // namespace tarnwick
