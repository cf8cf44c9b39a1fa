#pragma once

#include <QPainter>
#include <QRectF>
#include <QString>

#include "views/tiles/AppMarks.h"
#include "views/tiles/TileStyle.h"

namespace tarnwick {

class TileCanvas;

/// The picture of an application in `box`, or what stands in for it.
void drawAppIcon(TileCanvas& canvas, const QRectF& box, const QString& icon, const QString& name);

/// What an application is up to, on the icon that is there.
void drawAppMarks(TileCanvas& canvas, const QRectF& icon, const AppMarks& marks);

/// What the pointer, the keyboard and what is held over it make of the place of a running application, which has no
/// ground at rest.
void paintAppGround(QPainter& painter, const QRectF& rect, const TileStyle& style);
/// The place of a running application: its ground, its icon and its marks. `rect` is in the
/// painter's units, as for paintTile.
void paintRunningApp(QPainter& painter, const QRectF& rect, const QString& name, const QString& icon,
                     const AppMarks& marks, const TileStyle& style);

}  // namespace tarnwick
