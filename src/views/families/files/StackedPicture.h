#pragma once

#include <QImage>
#include <QRectF>

namespace tarnwick {

class TileCanvas;

/// One picture of a stack. It fills the box; what does not fit is cut away at its sides. A null one is still to come.
void paintStackedPicture(TileCanvas& canvas, const QRectF& box, const QImage& image);

}  // namespace tarnwick
