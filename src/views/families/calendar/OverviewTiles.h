#pragma once

#include <QList>
#include <QString>

#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// A few figures with a word below each.
struct OverviewContent {
  struct Figure {
    QString figure;
    QString label;
    QString symbol;  ///< In its place where there is no space for words.
    bool operator==(const Figure&) const = default;
  };
  QList<Figure> figures;

  bool operator==(const OverviewContent&) const = default;
};
OverviewContent makeTodayOverview(const TileRequest& request);
TileText describe(const OverviewContent& content, const QString& name);
void paint(TileCanvas& canvas, const OverviewContent& content);

}  // namespace tarnwick
