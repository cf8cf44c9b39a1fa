#include "services/GeocodeCache.h"

namespace tarnwick {

std::optional<GeocodeCache::Place> GeocodeCache::place(const QString& name) const {
  const auto found = places_.constFind(name.toLower());
  return found == places_.constEnd() ? std::nullopt : std::optional(*found);
}

void GeocodeCache::store(const QString& name, const Place& place) {
  const QString key = name.toLower();
  order_.removeOne(key);
  order_.append(key);
  places_.insert(key, place);
  if (order_.size() > kLimit) places_.remove(order_.takeFirst());
}

}  // namespace tarnwick
