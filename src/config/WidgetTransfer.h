#pragma once

#include <QString>

#include "config/DockWidget.h"

namespace tarnwick {

/// A widget as the text that travels by drag, from the library to a dock.
struct WidgetTransfer {
  static QString encode(const DockWidget& widget);
  /// The widget, checked as if it stood alone in a new configuration, and without ForeignOptions: whoever wrote the
  /// text may be anybody. Throws DomainError.
  static DockWidget decode(const QString& text);
};

}  // namespace tarnwick
