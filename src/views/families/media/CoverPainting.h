#pragma once

#include <QImage>
#include <QPainter>
#include <QRectF>

#include "views/theme/Palette.h"

namespace tarnwick {

class TileCanvas;

/// A cover with round corners that fills `place`, cut where it has another shape; without one a ground with a note.
void paintCover(TileCanvas& canvas, const QRectF& place, double corner, const QImage& cover);
void paintCover(QPainter& painter, const QRectF& place, double corner, const QImage& cover, const Palette& colors,
                const QColor& accent);

}  // namespace tarnwick
