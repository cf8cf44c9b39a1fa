#include "widgets/catalog/KindTraits.h"

#include <QHash>

#include "widgets/catalog/CatalogRows.h"

namespace tarnwick {

const KindTraits& KindTraits::of(const QString& kind) {
  static const QHash<QString, KindTraits> index = [] {
    QHash<QString, KindTraits> built;
    for (const catalog::Row& row : catalog::rows()) {
      KindTraits& traits = *built.insert(row.kind, row.traits);
      traits.cadence = row.cadence.value_or(cadenceOf(row.family));
    }
    return built;
  }();
  static constexpr KindTraits plain;
  const auto found = index.constFind(kind);
  return found == index.cend() ? plain : *found;
}

}  // namespace tarnwick
