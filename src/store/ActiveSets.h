#pragma once

#include <QList>
#include <QSet>
#include <QString>

#include "config/DockWidget.h"

namespace tarnwick {

/// What the shown widgets need. A service that no widget shows is not polled.
struct ActiveSets {
  QSet<QString> kinds;
  QSet<QString> families;
  QSet<QString> connectionModes;  ///< The option `connectionMode` of connected widgets.

  static ActiveSets of(const QList<DockWidget>& widgets);
  bool operator==(const ActiveSets&) const = default;
};

}  // namespace tarnwick
