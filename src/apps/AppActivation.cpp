#include "apps/AppActivation.h"

namespace tarnwick {

bool AppActivation::bring(const QString& path) { return bring(running_.byPath(path)); }

bool AppActivation::bring(quint64 identity, const WindowScope& scope) {
  auto app = running_.byIdentity(identity);
  if (!app) return false;
  if (const QList<quint64> inside = app->windowsIn(scope); !inside.isEmpty()) app->windows = inside;
  return bring(app);
}

bool AppActivation::bring(const std::optional<RunningApp>& app) {
  if (!app) return false;
  const QList<quint64> here = app->windowsIn({.workspaceOnly = true});
  const QList<quint64>& meant = here.isEmpty() ? app->windows : here;
  if (!meant.isEmpty()) windows_.activate(meant.first());
  return true;
}

}  // namespace tarnwick
