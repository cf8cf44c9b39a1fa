#pragma once

#include <QList>
#include <QRectF>
#include <QString>

#include "desktop/ClientWindows.h"

namespace tarnwick {

/// Whether windows of others are in the way of a dock that makes room for them. Pure.
struct DockDodge {
  /// The windows that a dock makes room for.
  enum class Mode { Off, Any, Active, Maximised };

  /// How near to the glass a window may come, in points.
  static constexpr double kMargin = 10;

  /// The mode of a settings value: "any", "active" or "maximised"; off for every other word.
  static Mode named(const QString& name);

  /// Whether one of the windows covers the glass's resting place or comes too near to it. A window that is minimised
  /// or on another workspace, a bar, and the desktop itself cover nothing, and none covers a glass of another screen.
  /// `glass` and `screen` are in desktop coordinates.
  static bool covers(Mode mode, const QList<ClientWindow>& windows, const QRectF& glass, const QRectF& screen);
};

}  // namespace tarnwick
