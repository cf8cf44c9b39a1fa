#include "services/ProviderTable.h"

#include <algorithm>

namespace tarnwick {

const QList<Provider>& allProviders() {
  static const QList<Provider> kProviders = {};
  return kProviders;
}

const Provider* providerFor(QStringView kind, const QList<Provider>& table) {
  const auto found = std::ranges::find_if(table, [kind](const Provider& provider) { return provider.serves(kind); });
  return found == table.end() ? nullptr : &*found;
}

DockWidget configured(const DockWidget& widget, const QList<Provider>& table) {
  const Provider* provider = providerFor(widget.kind, table);
  return provider ? provider->configured(widget) : widget;
}

}  // namespace tarnwick
