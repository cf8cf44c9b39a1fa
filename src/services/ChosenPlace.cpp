#include "services/ChosenPlace.h"

#include "base/Text.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

std::optional<GeocodeCache::Place> ChosenPlace::of(const DockWidget& widget) {
  const QString name = widget.options.value(option::city).trimmed();
  const QString position = widget.options.value(option::cityPosition);
  if (name.isEmpty() || position.section(u',', 2) != name) return std::nullopt;
  const auto latitude = Text::number(position.section(u',', 0, 0));
  const auto longitude = Text::number(position.section(u',', 1, 1));
  if (!latitude || !longitude) return std::nullopt;
  return GeocodeCache::Place{*latitude, *longitude, name};
}

void ChosenPlace::choose(DockWidget& widget, const GeocodeCache::Place& place) {
  widget.options.insert(option::city, place.name.trimmed());
  widget.options.insert(option::cityPosition, position(place));
  widget.options.remove(option::weatherLocation);
}

QString ChosenPlace::position(const GeocodeCache::Place& place) {
  return QStringLiteral("%1,%2,%3")
      .arg(QString::number(place.latitude, 'f', 4), QString::number(place.longitude, 'f', 4), place.name.trimmed());
}

}  // namespace tarnwick
