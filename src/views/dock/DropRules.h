#pragma once

#include <QList>
#include <QUrl>
#include <Qt>

#include "config/DockWidget.h"

class QMimeData;

namespace tarnwick {

/// What a dock does with things that come from other programs.
struct DropRules {
  /// What a tile does with files.
  enum class Taker { None, Folder, Trash, Shelf, Share, Application };

  static Taker takerOf(const DockWidget& widget);
  /// Whether this is the text of a widget on its way from the library to a dock.
  static bool carriesWidget(const QMimeData& data);
  static bool carriesFiles(const QMimeData& data);

  /// What a drop does, as file managers have it: into a folder Ctrl copies, Shift moves, and otherwise files move
  /// within a file system and are copied between two. Throwing away moves. Everywhere else files stay where they are,
  /// so that the drop never lets the other program delete them. Only an action of `possible` is answered; none of them
  /// gives IgnoreAction.
  static Qt::DropAction action(Taker taker, Qt::DropActions possible, Qt::KeyboardModifiers modifiers,
                               bool sameFileSystem);
  /// Whether the first of the files lies in the file system of the folder. Asks the file system once.
  static bool sameFileSystem(const QList<QUrl>& urls, const QString& folder);
};

}  // namespace tarnwick
