#pragma once

#include <QList>
#include <QUrl>
#include <Qt>

#include "config/DockWidget.h"
#include "widgets/catalog/KindTraits.h"

class QMimeData;

namespace tarnwick {

/// What docks and the panels of folders do with things that come from other programs.
struct DropRules {
  using Taker = TileTakes;

  /// What a folder's tile leads to may be gone: see lookAt.
  static Taker takerOf(const DockWidget& widget);
  /// The folder that files go into on a tile; empty for none.
  static QString folderOf(const DockWidget& widget);
  /// Whether this is the text of a widget on its way from the library to a dock.
  static bool carriesWidget(const QMimeData& data);
  static bool carriesFiles(const QMimeData& data);

  /// What a drop does, as file managers have it: into a folder Ctrl copies, Shift moves, and otherwise files move
  /// within a file system and are copied between two. Throwing away moves. Everywhere else files stay where they are,
  /// so that the drop never lets the other program delete them. Only an action of `possible` is answered; none of them
  /// gives IgnoreAction.
  static Qt::DropAction action(Taker taker, Qt::DropActions possible, Qt::KeyboardModifiers modifiers,
                               bool sameFileSystem);
  struct Folder {
    bool exists = false;
    bool sameFileSystem = false;  ///< As the first of the files.
  };
  /// Asks the file system about a folder that files are held over.
  static Folder lookAt(const QString& folder, const QList<QUrl>& urls);
  /// Whether all of the files are in that folder already, or are that folder.
  static bool holdsAll(const QString& folder, const QList<QUrl>& urls);
};

}  // namespace tarnwick
