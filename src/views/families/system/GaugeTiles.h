#pragma once

#include <optional>

#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// More of a hundred than this is so much that the user should see it by the colour.
inline constexpr int kAlarmingPercent = 85;

/// A share of a hundred on an arc.
struct GaugeContent {
  std::optional<int> percent;  ///< Absent until it was read.
  QString label;

  bool operator==(const GaugeContent&) const = default;
};
GaugeContent makeCpuGauge(const TileRequest& request);
GaugeContent makeMemoryGauge(const TileRequest& request);
GaugeContent makeStorageGauge(const TileRequest& request);
TileText describe(const GaugeContent& content, const QString& name);
void paint(TileCanvas& canvas, const GaugeContent& content);

}  // namespace tarnwick
