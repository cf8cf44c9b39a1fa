#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <optional>

#include "config/DockWidget.h"

namespace tarnwick {

/// What a converter is set to.
struct Conversion {
  QString value;
  QString from;
  QString to;

  /// Ten kilometres in miles where nothing was chosen, or what was chosen belongs to two groups.
  static Conversion of(const DockWidget& widget);
  bool operator==(const Conversion&) const = default;
};

/// "#2E8C94" or "#28C", with or without "#"; absent for anything else.
std::optional<QColor> colorOfHex(const QString& text);
QString hexOf(const QColor& color);

/// The emoji that were copied last, newest first.
QStringList recentEmoji(const DockWidget& widget);

}  // namespace tarnwick
