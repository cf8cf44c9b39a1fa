#pragma once

#include <QString>

namespace tarnwick {

class TileCanvas;

/// Whether a day has the tile for itself.
enum class DaySize { Alone, Beside };
/// A weekday in the accent over a figure, both in the middle of `x`; tiles of calendars begin with it too.
void paintDay(TileCanvas& canvas, double x, const QString& weekday, const QString& day, DaySize size);

}  // namespace tarnwick
