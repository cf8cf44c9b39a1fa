#pragma once

#include <optional>

#include "config/DockWidget.h"
#include "services/GeocodeCache.h"

namespace tarnwick {

/// The place that a user chose for a widget among those of one name. Its name is the option `city`, where it is stands
/// in an option beside that, which counts only as long as the name is the same: a city that is typed, or that comes
/// from elsewhere, is looked up.
struct ChosenPlace {
  static std::optional<GeocodeCache::Place> of(const DockWidget& widget);
  /// Has the widget show this place, instead of where the user is.
  static void choose(DockWidget& widget, const GeocodeCache::Place& place);
  /// What the option beside `city` holds of a place.
  static QString position(const GeocodeCache::Place& place);
};

}  // namespace tarnwick
