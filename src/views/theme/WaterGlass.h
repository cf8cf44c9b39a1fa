#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

namespace tarnwick {

/// A glass that is filled to `share`, from 0 to 1.
void drawWaterGlass(QPainter& painter, const QRectF& box, double share, const QColor& glass, const QColor& water);

}  // namespace tarnwick
