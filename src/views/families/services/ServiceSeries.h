#pragma once

#include <QList>
#include <QRectF>

namespace tarnwick {

class TileCanvas;

/// The latest of a series as bars, as many as there is space for; the last stands out.
void paintServiceBars(TileCanvas& canvas, const QRectF& box, const QList<double>& numbers);
/// A day each as a square in one of four strengths, downwards, the last one at the end.
void paintServiceSquares(TileCanvas& canvas, const QRectF& box, const QList<double>& numbers);

}  // namespace tarnwick
