#pragma once

#include <QList>
#include <memory>
#include <vector>

#include "desktop/Toggles.h"
#include "store/AppStore.h"
#include "views/dock/TileServices.h"
#include "views/tiles/TileSource.h"
#include "views/tiles/TileSources.h"

namespace tarnwick {

/// What the store, the switches and the desktop have for tiles of a display's dock. Everything is borrowed and outlives
/// the sources.
std::vector<std::unique_ptr<TileSource>> makeStoreSources(const AppStore& store, const Toggles& toggles,
                                                          const TileServices& services, const QString& display);

/// What tiles of these widgets show at this moment, whether or not a dock holds them: the same sources, and those that
/// `services` brings, each asked once.
TileSources storeSources(const AppStore& store, const Toggles& toggles, const TileServices& services,
                         const QList<DockWidget>& widgets);

/// The user's calendars at this moment. Never null: where nothing is known it says why.
std::shared_ptr<const CalendarDigest> calendarOf(const AppStore& store, const TileServices& services);

/// The icon of a running application, as the provider of icons knows it.
QString iconOf(const RunningApp& app, const TileServices& services);

}  // namespace tarnwick
