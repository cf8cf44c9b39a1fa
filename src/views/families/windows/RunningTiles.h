#pragma once

#include <QList>
#include <QPointF>
#include <optional>

#include "views/tiles/TileContent.h"
#include "views/tiles/TileRequest.h"

namespace tarnwick {

class TileCanvas;

/// The applications that run, side by side. What does not fit is counted.
struct RunningAppsContent {
  QList<RunningFacts> apps;
  qsizetype more = 0;

  bool operator==(const RunningAppsContent&) const = default;
};
RunningAppsContent makeRunningApps(const TileRequest& request);
TileText describe(const RunningAppsContent& content, const QString& name);
void paint(TileCanvas& canvas, const RunningAppsContent& content);
/// The place of the application at a point.
std::optional<int> partAt(const RunningAppsContent& content, const TileClick& click);
std::optional<TilePart> namedPart(const RunningAppsContent& content, const TileClick& point);

/// The applications that run as a stack, the one in front before the others.
struct SwitcherContent {
  QList<RunningFacts> apps;
  QString symbol;

  bool operator==(const SwitcherContent&) const = default;
};
SwitcherContent makeSwitcher(const TileRequest& request);
TileText describe(const SwitcherContent& content, const QString& name);
void paint(TileCanvas& canvas, const SwitcherContent& content);

/// One window that the user put on the dock.
struct PinnedWindowContent {
  QString title;
  QString app;
  TilePicture picture;  ///< Without an image while the window is not open, or not shown to us.

  bool operator==(const PinnedWindowContent&) const = default;
};
PinnedWindowContent makePinnedWindow(const TileRequest& request);
TileText describe(const PinnedWindowContent& content, const QString& name);
void paint(TileCanvas& canvas, const PinnedWindowContent& content);

}  // namespace tarnwick
