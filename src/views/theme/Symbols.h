#pragma once

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QRectF>
#include <QString>

namespace tarnwick {

/// The program's drawn symbols: outlines on a grid of 20 × 20, all of one stroke, found by the names that the widget
/// catalog uses. A name ending in ".fill" is drawn like the name without it.
struct Symbols {
  static bool has(const QString& name);
  /// The outline on the grid; a plain square for a name that has no drawing. The reference stays valid.
  static const QPainterPath& outline(const QString& name);
  /// Draws the symbol to fill `box`, which should be square.
  static void draw(QPainter& painter, const QString& name, const QRectF& box, const QColor& color);
  /// The width of the stroke at a symbol's size: 1.6 at 20, 1.5 at 16.
  static double strokeWidth(double size);
};

}  // namespace tarnwick
