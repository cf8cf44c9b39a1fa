#pragma once

#include <QList>
#include <memory>
#include <type_traits>
#include <vector>

#include "desktop/Toggles.h"
#include "store/AppStore.h"
#include "views/dock/LiveDock.h"
#include "views/tiles/TileSource.h"
#include "views/tiles/TileSources.h"

namespace tarnwick {

/// What the store, the switches and the desktop have for tiles. Everything is borrowed and outlives the sources.
std::vector<std::unique_ptr<TileSource>> makeStoreSources(const AppStore& store, const Toggles& toggles,
                                                          const TileQuestions& questions);

/// What tiles of these widgets show at this moment, whether or not a dock holds them: the same sources, and those that
/// `questions` brings, each asked once.
TileSources storeSources(const AppStore& store, const Toggles& toggles, const TileQuestions& questions,
                         const QList<DockWidget>& widgets);

/// The user's calendars at this moment. Never null: where nothing is known it says why.
std::shared_ptr<const CalendarDigest> calendarOf(const AppStore& store, const TileQuestions& questions);

/// The icon of a running application, as the provider of icons knows it.
QString iconOf(const RunningApp& app, const TileQuestions& questions);

/// The answer to a question, or nothing where nobody answers it.
template <class Function, class... Arguments>
auto ask(const Function& function, const Arguments&... arguments) -> decltype(function(arguments...)) {
  using Answer = decltype(function(arguments...));
  if (function) return function(arguments...);
  if constexpr (!std::is_void_v<Answer>) return Answer{};
}

}  // namespace tarnwick
