#pragma once

#include <QPainter>
#include <QRectF>
#include <QString>

namespace tarnwick {

/// Whether a character is a picture rather than a sign of writing: an arrow, a dash and "©" have the colour of the
/// text.
bool hasOwnColours(const QString& character);

/// Draws one emoji in its own colours, as large as fits into `box`. The picture is kept.
void drawEmoji(QPainter& painter, const QString& emoji, const QRectF& box);

}  // namespace tarnwick
