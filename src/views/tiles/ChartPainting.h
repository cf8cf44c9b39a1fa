#pragma once

#include <QColor>
#include <QList>
#include <QRectF>

namespace tarnwick {

class TileCanvas;

/// The top of a chart is so many times its highest value.
inline constexpr double kChartHeadroom = 1.1;

/// One line of a small chart.
struct ChartLook {
  QColor color;
  double low = 0;        ///< The value at the foot.
  double high = 100;     ///< The value at the top.
  qsizetype depth = 40;  ///< How many values fill the width; fewer are at its end.
  bool filled = true;
  bool marked = true;    ///< Whether the last value is a dot in a halo.
  bool hanging = false;  ///< Whether it grows downwards from the top.
};

/// The highest of what is finite; 0 where nothing is above it.
double highestOf(const QList<double>& values);

/// Draws a history, oldest value first, as a line with round joints.
void paintChart(TileCanvas& canvas, const QRectF& box, const QList<double>& values, const ChartLook& look);

}  // namespace tarnwick
