#include "store/WidgetPlaces.h"

#include <algorithm>

#include "store/DocumentEdits.h"

namespace tarnwick {

std::optional<WidgetPlace> WidgetPlaces::of(const DockConfiguration& config, const QUuid& widget) {
  for (const DockProfile& profile : config.profiles) {
    for (qsizetype i = 0; i < profile.widgets.size(); ++i) {
      if (profile.widgets[i].id != widget) continue;
      const bool isLast = i + 1 == profile.widgets.size();
      return WidgetPlace{profile.id, i, isLast ? QUuid() : profile.widgets[i + 1].id};
    }
  }
  return std::nullopt;
}

bool WidgetPlaces::insert(DockConfiguration& config, qsizetype profile, const DockWidget& widget, const QUuid& before) {
  if (profile < 0 || profile >= config.profiles.size()) return false;
  auto& widgets = config.profiles[profile].widgets;
  if (widgets.size() >= DockConfiguration::kMostWidgets) return false;
  widgets.insert(std::ranges::find(widgets, before, &DockWidget::id), widget);
  return true;
}

bool WidgetPlaces::putBack(DockConfiguration& config, const DockWidget& widget, const WidgetPlace& place) {
  if (DocumentEdits::find(std::as_const(config), widget.id)) return false;
  const auto home = std::ranges::find(config.profiles, place.profile, &DockProfile::id);
  if (home == config.profiles.end()) return insert(config, config.activeIndex(), widget, {});
  const auto& widgets = home->widgets;
  QUuid before = place.before;
  // The neighbour has gone as well: the place itself must do.
  const bool isThere = std::ranges::find(widgets, before, &DockWidget::id) != widgets.end();
  if (!before.isNull() && !isThere && place.index < widgets.size()) before = widgets[place.index].id;
  return insert(config, home - config.profiles.begin(), widget, before);
}

}  // namespace tarnwick
