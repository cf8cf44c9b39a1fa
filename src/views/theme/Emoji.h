#pragma once

#include <QPainter>
#include <QRectF>
#include <QString>

namespace tarnwick {

/// Draws one emoji in its own colours, as large as fits into `box`. The picture is kept.
void drawEmoji(QPainter& painter, const QString& emoji, const QRectF& box);

}  // namespace tarnwick
