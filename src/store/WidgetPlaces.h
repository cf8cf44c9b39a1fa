#pragma once

#include <QUuid>
#include <optional>

#include "config/DockConfiguration.h"

namespace tarnwick {

/// The position of a widget in the document, given by its neighbours so that it holds when others come and go.
struct WidgetPlace {
  QUuid profile;
  qsizetype index = 0;
  QUuid before;  ///< The widget behind it; null for none.

  bool operator==(const WidgetPlace&) const = default;
};

/// Placing widgets in the settings document, as pure changes of a value.
struct WidgetPlaces {
  static std::optional<WidgetPlace> of(const DockConfiguration& config, const QUuid& widget);

  /// Inserts in front of the widget `before`, at the end when that is null or not there. Refused at 150 widgets.
  static bool insert(DockConfiguration& config, qsizetype profile, const DockWidget& widget, const QUuid& before);

  /// Puts a removed widget where it was; into the active profile when its own is gone. Refused when it is there, and at
  /// 150 widgets.
  static bool putBack(DockConfiguration& config, const DockWidget& widget, const WidgetPlace& place);
};

}  // namespace tarnwick
