#pragma once

#include <QColor>
#include <QPainter>
#include <QPointF>

namespace tarnwick {

/// Filled marks of what a click does to something that runs, around `centre`; `height` is theirs.
void drawPlayGlyph(QPainter& painter, QPointF centre, double height, const QColor& color);
void drawPauseGlyph(QPainter& painter, QPointF centre, double height, const QColor& color);
/// To the next item, or with `back` to the one before.
void drawSkipGlyph(QPainter& painter, QPointF centre, double height, bool back, const QColor& color);

}  // namespace tarnwick
