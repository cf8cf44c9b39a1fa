#pragma once

#include <QPainter>
#include <QRectF>

#include "views/tiles/TileContent.h"
#include "views/tiles/TileStyle.h"

namespace tarnwick {

/// Paints one tile: its ground, its content, and what its state adds. `rect` is the tile's place in the painter's
/// units, the scale already in it; a magnified, pressed or dragged tile leaves it as far as tilePaintBounds says.
void paintTile(QPainter& painter, const QRectF& rect, const TileContent& content, const TileStyle& style);

/// The ground alone, as large as the style says: what the tile's state, the keyboard and what is held over it make of
/// it.
void paintTileGround(QPainter& painter, const QRectF& rect, const TileStyle& style);

/// The ground of a tile with this content: none where the content is the whole tile, but for what its state adds.
void paintTileGround(QPainter& painter, const QRectF& rect, const TileContent& content, const TileStyle& style);

/// Everything that paintTile may touch.
QRectF tilePaintBounds(const QRectF& rect, const TileStyle& style);

/// How much larger than its own size a tile in this style is drawn.
double tileFactor(const TileStyle& style);

/// Gives the painter the coordinates of the tile at `rect`: from its upper left, in the units of a tile, and mirrored
/// where the style reads from right to left. TileCanvas draws in these.
void enterTile(QPainter& painter, const QRectF& rect, const TileStyle& style);

/// Moves the painter so that what is drawn in `rect` is drawn `factor` as large around its centre.
void magnify(QPainter& painter, const QRectF& rect, double factor);

}  // namespace tarnwick
