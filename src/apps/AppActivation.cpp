#include "apps/AppActivation.h"

#include <QSet>
#include <ranges>

namespace tarnwick {

bool AppActivation::bring(const QString& path) { return bring(running_.byPath(path)); }

bool AppActivation::bring(quint64 identity, const WindowScope& scope) {
  auto app = running_.byIdentity(identity);
  if (!app) return false;
  if (const QList<quint64> inside = app->windowsIn(scope); !inside.isEmpty()) app->windows = inside;
  return bring(app);
}

QList<quint64> AppActivation::windowsToActivate(const RunningApp& app, const ClientWindows& windows) {
  QSet<quint64> elsewhere;
  for (const ClientWindow& window : windows.all())
    if (window.elsewhere) elsewhere.insert(window.id);
  QList<quint64> here = app.windows;
  here.removeIf([&](quint64 window) { return elsewhere.contains(window); });
  return here.isEmpty() ? app.windows : here;
}

bool AppActivation::bring(const std::optional<RunningApp>& app) {
  if (!app) return false;
  // Activating a window changes the list: this copy stays as it was.
  const QList<quint64> windows = windowsToActivate(*app, windows_);
  for (const quint64 window : windows | std::views::reverse) windows_.activate(window);
  return true;
}

}  // namespace tarnwick
