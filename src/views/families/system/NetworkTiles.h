#pragma once

#include <QList>
#include <optional>

#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"
#include "widgets/FileWords.h"

namespace tarnwick {

class TileCanvas;

/// What comes and goes over the network; with histories also as a chart, downloads above and uploads below its middle.
struct NetworkContent {
  std::optional<SpeedWords> download;
  std::optional<SpeedWords> upload;
  bool chart = false;
  QList<double> downloadHistory;
  QList<double> uploadHistory;

  bool operator==(const NetworkContent&) const = default;
};
NetworkContent makeNetwork(const TileRequest& request);
NetworkContent makeNetworkChart(const TileRequest& request);
TileText describe(const NetworkContent& content, const QString& name);
void paint(TileCanvas& canvas, const NetworkContent& content);

}  // namespace tarnwick
