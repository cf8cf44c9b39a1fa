#include "apps/AppActivation.h"

#include <ranges>

namespace tarnwick {

bool AppActivation::bring(const QString& path) { return bring(running_.byPath(path)); }

bool AppActivation::bring(quint64 identity) { return bring(running_.byIdentity(identity)); }

bool AppActivation::bring(const std::optional<RunningApp>& app) {
  if (!app) return false;
  // Activating a window changes the list: the copy in `app` stays as it was.
  for (const quint64 window : app->windows | std::views::reverse) windows_.activate(window);
  return true;
}

}  // namespace tarnwick
