#pragma once

#include <QColor>
#include <QList>

namespace tarnwick {

class TileCanvas;
struct ChartLook;
struct ServiceContent;

/// How the series of a value is drawn as a line: what rose or fell has the colour of that.
ChartLook seriesLook(const TileCanvas& canvas, const ServiceContent& content, const QList<double>& numbers);

/// A price with its history: of what, by how much it changed, and the curve of that.
void paintQuoteSeries(TileCanvas& canvas, const ServiceContent& content);
/// Prices below each other, each with its change.
void paintWatchlist(TileCanvas& canvas, const ServiceContent& content);

}  // namespace tarnwick
