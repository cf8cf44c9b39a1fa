#pragma once

#include <QList>
#include <QString>

#include "views/tiles/AppMarks.h"
#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

/// The way to all applications.
struct ApplicationsContent {
  bool operator==(const ApplicationsContent&) const = default;
};
ApplicationsContent makeApplications(const TileRequest& request);
TileText describe(const ApplicationsContent& content, const QString& name);
void paint(TileCanvas& canvas, const ApplicationsContent& content);

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

}  // namespace tarnwick
