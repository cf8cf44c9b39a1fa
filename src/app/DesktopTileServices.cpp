#include "app/DesktopTileServices.h"

#include "apps/InstalledApps.h"
#include "desktop/Files.h"
#include "desktop/MotionPreference.h"
#include "views/families/Rooms.h"

namespace tarnwick {

std::optional<ApplicationFacts> DesktopTileServices::applicationAt(const QString& path) const {
  const auto entry = services_.installedApps.byPath(path);
  if (!entry) return std::nullopt;
  ApplicationFacts facts;
  facts.name = entry->name;
  const QString own = ownIcon(path);
  facts.icon = own.isEmpty() ? entry->iconName : own;
  if (const auto running = services_.runningApps.byPath(path)) facts.identity = running->identity;
  return facts;
}

LauncherHint DesktopTileServices::hintOf(const QString& desktopId) const { return services_.hints.of(desktopId); }

std::optional<qint64> DesktopTileServices::trashItems() const { return services_.files.trashCount(); }

bool DesktopTileServices::reducesMotion() const { return services_.motion.reducesMotion(); }

void DesktopTileServices::addReadings(ReadingFacts& readings, const QList<DockWidget>& widgets) const {
  Rooms::read(readings, widgets, readingServices_);
}

}  // namespace tarnwick
