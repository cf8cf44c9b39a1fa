#pragma once

#include <QList>
#include <QPainter>
#include <QRectF>

#include "views/tiles/AppMarks.h"
#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"
#include "views/tiles/TileStyle.h"

namespace tarnwick {

/// One application that the user put on the dock.
struct LauncherContent {
  QString name;
  QString icon;
  quint64 application = 0;  ///< The running one; 0 while it does not run.
  AppMarks marks;

  bool operator==(const LauncherContent&) const = default;
};
LauncherContent makeLauncher(const TileRequest& request);
TileText describe(const LauncherContent& content, const QString& name);
void paint(TileCanvas& canvas, const LauncherContent& content);
TileApplication standsFor(const LauncherContent& content);

/// Several applications behind one tile, which shows the first four.
struct AppFolderContent {
  struct Entry {
    QString name;
    QString icon;
    bool operator==(const Entry&) const = default;
  };
  QList<Entry> entries;

  bool operator==(const AppFolderContent&) const = default;
};
AppFolderContent makeAppFolder(const TileRequest& request);
TileText describe(const AppFolderContent& content, const QString& name);
void paint(TileCanvas& canvas, const AppFolderContent& content);

/// The picture of an application in `box`, or what stands in for it.
void drawAppIcon(TileCanvas& canvas, const QRectF& box, const QString& icon, const QString& name);

/// The place of a running application, which has no ground of its own: its icon and its marks. `rect` is in the
/// painter's units, as for paintTile.
void paintRunningApp(QPainter& painter, const QRectF& rect, const QString& name, const QString& icon,
                     const AppMarks& marks, const TileStyle& style);

}  // namespace tarnwick
