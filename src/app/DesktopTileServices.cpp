#include "app/DesktopTileServices.h"

#include "apps/InstalledApps.h"
#include "desktop/Files.h"
#include "desktop/MotionPreference.h"
#include "views/families/Rooms.h"

namespace tarnwick {

DesktopTileServices::DesktopTileServices(const AppStore& store, const Services& services, Readings& readings,
                                         ReadingServices readingServices, const DockCommands& commands, OwnIcons& icons)
    : store_(store),
      services_(services),
      readings_(readings),
      readingServices_(std::move(readingServices)),
      commands_(commands),
      icons_(icons),
      connected_(std::make_unique<ConnectionTiles>(readingServices_.connections)) {
  connect(&commands_, &DockCommands::launchingChanged, this, &TileServices::applicationsChanged);
  connect(&services_.hints, &LauncherHints::changed, this, &TileServices::applicationsChanged);
  connect(&services_.installedApps, &InstalledApps::changed, this, &TileServices::entriesChanged);
  connect(&services_.files, &Files::trashChanged, this, &TileServices::trashChanged);
  connect(&readings_, &Readings::calendarChanged, this, &TileServices::calendarChanged);
  connect(&readings_, &Readings::changed, this, &TileServices::readingsChanged);
  connect(&readings_, &Readings::clockFormatChanged, this, &TileServices::habitsChanged);
}

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
