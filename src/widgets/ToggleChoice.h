#pragma once

#include <QList>
#include <QString>

#include "config/DockWidget.h"
#include "desktop/Toggles.h"

namespace tarnwick {

/// Which of the desktop's switches a tile of quick toggles shows.
struct ToggleChoice {
  static constexpr qsizetype kShown = 4;

  /// All there are, in the order in which they are offered.
  static const QList<Toggle>& all();
  static QString name(Toggle toggle);
  static QString symbol(Toggle toggle);

  /// The option that holds the choice.
  static QLatin1StringView key();
  /// The chosen ones as the option has them, and back. A text that names none gives the usual four; no more than that
  /// many are ever given.
  static QString text(const QList<Toggle>& toggles);
  static QList<Toggle> of(const QString& text);
};

}  // namespace tarnwick
