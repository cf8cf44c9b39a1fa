#include "widgets/catalog/KindTraits.h"

#include <QHash>

#include "widgets/catalog/CatalogRows.h"

namespace tarnwick {

const KindTraits& KindTraits::of(const QString& kind) {
  static const QHash<QString, const KindTraits*> index = [] {
    QHash<QString, const KindTraits*> built;
    for (const catalog::Row& row : catalog::rows()) built.insert(row.kind, &row.traits);
    return built;
  }();
  static constexpr KindTraits plain;
  return *index.value(kind, &plain);
}

}  // namespace tarnwick
