#pragma once

#include <QPainter>
#include <QRectF>
#include <functional>

namespace tarnwick {

/// Calls `draw` for one low band of `bounds` after the other, each time with the clip on that band.
///
/// Qt passes every fill of more than some ninety runs of pixels to worker threads and waits for them. For the small
/// shapes of a tile that costs more than it saves, and it wakes the machine with every tick of a clock. `draw` should
/// fill one shape and nothing else.
void inBands(QPainter& painter, const QRectF& bounds, const std::function<void()>& draw);

}  // namespace tarnwick
