#pragma once

#include <QList>
#include <QSet>
#include <QString>

#include "config/DockWidget.h"

namespace tarnwick {

/// What the widgets need that a connected display shows. A service that none of them shows is not polled.
struct ActiveSets {
  QSet<QString> kinds;
  QSet<QString> families;
  QSet<QString> connectionModes;  ///< The option `connectionMode` of connected widgets.
  QList<DockWidget> widgets;      ///< Those that are shown, each once.

  static ActiveSets of(const QList<DockWidget>& widgets);
};

}  // namespace tarnwick
