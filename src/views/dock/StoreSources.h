#pragma once

#include <memory>

#include "desktop/Toggles.h"
#include "store/AppStore.h"
#include "views/dock/TileServices.h"
#include "views/tiles/KeptSources.h"

namespace tarnwick {

/// Keeps what the store, the switches, the desktop and the sources of `services` have for tiles of a display's dock, or
/// for any tiles where `display` is empty. Everything is borrowed and outlives it.
std::unique_ptr<KeptSources> keepStoreSources(const AppStore& store, const Toggles& toggles,
                                              const TileServices& services, const QString& display);

/// The user's calendars at this moment. Never null: where nothing is known it says why.
std::shared_ptr<const CalendarDigest> calendarOf(const AppStore& store, const TileServices& services);

/// The icon of a running application, as the provider of icons knows it.
QString iconOf(const RunningApp& app, const TileServices& services);

}  // namespace tarnwick
