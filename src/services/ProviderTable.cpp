#include "services/ProviderTable.h"

#include <algorithm>

#include "services/providers/Providers.h"

namespace tarnwick {

const QList<Provider>& allProviders() {
  // The first that serves a kind has it: those that serve named kinds stand before those that look for a word in them.
  static const QList<Provider> kProviders = {
      claudePlan(),    openCode(),     glm(),     copilot(),         cursorPersonal(), cursorTeam(), grok(),
      polar(),         dodoPayments(), dub(),     simpleAnalytics(), dataFast(),       youTube(),    x(),
      homeAssistant(), gmail(),        dropbox(), tikTok(),          shopify(),        stocks(),     gitHub(),
      linear(),        supabase(),     resend(),  plausible(),       stripe(),         coinGecko(),
  };
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
