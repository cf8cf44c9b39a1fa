#include "facilities/ActiveSets.h"

#include "widgets/catalog/Catalog.h"
#include "widgets/catalog/Family.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

ActiveSets ActiveSets::of(const QList<DockWidget>& widgets) {
  ActiveSets sets;
  sets.widgets = widgets;
  for (const DockWidget& widget : widgets) {
    const QString family = Catalog::find(widget.kind).family;
    sets.kinds.insert(widget.kind);
    sets.families.insert(family);
    const bool connected = isConnectedFamily(family) || family == Family::Metric;
    if (const auto mode = widget.options.constFind(option::connectionMode);
        connected && mode != widget.options.constEnd()) {
      sets.connectionModes.insert(*mode);
    }
  }
  return sets;
}

}  // namespace tarnwick
