#pragma once

#include <QList>
#include <QStringList>
#include <optional>

#include "views/tiles/FigureTile.h"
#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// How many screenshots are in the stack.
inline constexpr qsizetype kShownScreenshots = 2;

/// The files that were open last, as a fan of papers.
struct RecentFilesContent {
  QString name;
  QStringList files;

  bool operator==(const RecentFilesContent&) const = default;
};
RecentFilesContent makeRecentFiles(const TileRequest& request);
TileText describe(const RecentFilesContent& content, const QString& name);
void paint(TileCanvas& canvas, const RecentFilesContent& content);

/// The newest screenshots as a stack of pictures.
struct ScreenshotsContent {
  QString caption;              ///< When the newest was taken.
  QList<TilePicture> pictures;  ///< The newest first; one without an image is still to come.

  bool operator==(const ScreenshotsContent&) const = default;
};
ScreenshotsContent makeScreenshots(const TileRequest& request);
TileText describe(const ScreenshotsContent& content, const QString& name);
void paint(TileCanvas& canvas, const ScreenshotsContent& content);

/// A field that a click writes into.
struct SearchContent {
  QString symbol;
  QString placeholder;

  bool operator==(const SearchContent&) const = default;
};
SearchContent makeFileSearch(const TileRequest& request);
SearchContent makeWebSearch(const TileRequest& request);
TileText describe(const SearchContent& content, const QString& name);
void paint(TileCanvas& canvas, const SearchContent& content);

/// How many bookmarks there are.
FigureContent makeBookmarks(const TileRequest& request);

}  // namespace tarnwick
