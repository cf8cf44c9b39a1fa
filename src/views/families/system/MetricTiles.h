#pragma once

#include <QList>
#include <optional>

#include "views/tiles/FigureTile.h"
#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// A battery that is as full as the machine's.
struct BatteryContent {
  std::optional<int> percent;  ///< Absent until it was read, and without a battery.
  QString word;                ///< What is said while there is no figure.
  bool charging = false;
  bool plugged = false;  ///< On the charger, whether or not that charges it.

  bool operator==(const BatteryContent&) const = default;
};
BatteryContent makeBattery(const TileRequest& request);
TileText describe(const BatteryContent& content, const QString& name);
void paint(TileCanvas& canvas, const BatteryContent& content);

/// A figure and its history.
struct MetricChartContent {
  QString figure;  ///< A dash until it was read.
  QString unit;
  QString caption;
  QList<double> history;
  double low = 0;  ///< The values at the foot and the top of the chart.
  double high = 100;
  bool isAlarming = false;  ///< So much that its colour warns.

  bool operator==(const MetricChartContent&) const = default;
};
MetricChartContent makeCpuChart(const TileRequest& request);
MetricChartContent makeMemoryChart(const TileRequest& request);
MetricChartContent makeTemperatureChart(const TileRequest& request);
TileText describe(const MetricChartContent& content, const QString& name);
void paint(TileCanvas& canvas, const MetricChartContent& content);

/// Processor and memory in one chart.
struct SystemChartContent {
  std::optional<int> cpu;
  std::optional<int> memory;
  QList<double> cpuHistory;
  QList<double> memoryHistory;

  bool operator==(const SystemChartContent&) const = default;
};
SystemChartContent makeSystemChart(const TileRequest& request);
TileText describe(const SystemChartContent& content, const QString& name);
void paint(TileCanvas& canvas, const SystemChartContent& content);

FigureContent makeDownload(const TileRequest& request);
FigureContent makeUpload(const TileRequest& request);
FigureContent makeTemperature(const TileRequest& request);

}  // namespace tarnwick
