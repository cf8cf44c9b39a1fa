#pragma once

#include <QList>

#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// The processes that use most.
struct ProcessesContent {
  struct Row {
    QString name;
    QString value;
    double share = 0;  ///< From 0 to 1, of the bar.
    bool operator==(const Row&) const = default;
  };
  QList<Row> rows;
  QString message;  ///< While there are none.

  bool operator==(const ProcessesContent&) const = default;
};
ProcessesContent makeProcesses(const TileRequest& request);
TileText describe(const ProcessesContent& content, const QString& name);
void paint(TileCanvas& canvas, const ProcessesContent& content);

/// By what a widget sorts its processes.
ProcessOrder processOrderOf(const DockWidget& widget);

}  // namespace tarnwick
