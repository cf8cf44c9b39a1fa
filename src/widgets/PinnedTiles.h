#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <functional>

#include "apps/RunningApp.h"
#include "config/DockWidget.h"

namespace tarnwick {

/// Tiles that stand for an application, a file or a folder by its path.
struct PinnedTiles {
  /// The desktop-file id that an entry at a path has; empty for a path that is none.
  using IdOf = std::function<QString(const QString& path)>;

  /// Every path that one of the widgets holds, in its option `path` or among the lines of `paths`.
  static QSet<QString> heldPaths(const QList<DockWidget>& widgets);

  /// Those of the running applications that no widget holds. An entry that was overridden in another folder is the same
  /// application.
  static QList<RunningApp> unheld(const QList<RunningApp>& running, const QList<DockWidget>& widgets, const IdOf& idOf);

  /// Whether one of the widgets holds the application of a desktop entry, by the same measure.
  static bool hold(const QList<DockWidget>& widgets, const QString& entryPath, const IdOf& idOf);

  /// A widget with an identity of its own that starts the application of a desktop entry, or opens a file.
  static DockWidget launcher(const QString& path);
  /// A widget with an identity of its own that opens a folder.
  static DockWidget folder(const QString& path);

  /// What a person calls the file or folder at a path: its own name, but for the folders that are better known by
  /// another.
  static QString nameOf(const QString& path);

  static bool isDesktopEntry(const QString& path) { return path.endsWith(QLatin1StringView(".desktop")); }
};

}  // namespace tarnwick
