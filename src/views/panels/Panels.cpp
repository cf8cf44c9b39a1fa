#include "views/panels/Panels.h"

#include <QLatin1StringView>
#include <algorithm>
#include <array>

#include "views/panels/MetricsPanel.h"
#include "views/panels/PlainPanel.h"
#include "views/panels/TogglesPanel.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

struct PanelRow {
  QLatin1StringView word;  ///< A kind or a family; a kind wins.
  std::unique_ptr<TilePanel> (*make)(const PanelContext&);
};

constexpr std::array kPanelRows = {
    PanelRow{"metric"_L1, makeMetricsPanel},
    PanelRow{"toggles"_L1, makeTogglesPanel},
};

const PanelRow* rowOf(const WidgetDefinition& definition) {
  for (const QString& word : {definition.id, definition.family})
    if (const auto row = std::ranges::find(kPanelRows, word, &PanelRow::word); row != kPanelRows.end()) return &*row;
  return nullptr;
}

}  // namespace

std::unique_ptr<TilePanel> makePanel(const PanelContext& context) {
  const PanelRow* row = rowOf(Catalog::find(context.kind()));
  return row ? row->make(context) : makePlainPanel(context);
}

bool hasOwnPanel(const WidgetDefinition& definition) { return rowOf(definition) != nullptr; }

}  // namespace tarnwick
