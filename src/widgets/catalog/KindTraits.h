#pragma once

#include <QString>

namespace tarnwick {

/// What a click on a tile opens where no part of the tile takes the click.
enum class TileOpens {
  Panel,        ///< Its panel.
  Application,  ///< What its option `path` names.
  Folder,       ///< Its folder, in the file manager or in its panel as the user has set it; its panel without one.
  Trash         ///< The same, of the trash.
};

/// What the rest of the program asks of a kind of widget: columns of the catalog's row. All that a room alone must know
/// of its kinds is in the room.
struct KindTraits {
  TileOpens opens = TileOpens::Panel;
  bool isGap = false;             ///< It only parts other tiles.
  bool isFolder = false;          ///< It stands for the folder that its option `path` names, and is called after it.
  bool needsRunningApps = false;  ///< It shows which applications run, or their windows.

  bool launches() const { return opens == TileOpens::Application; }

  /// Those of `kind`; the plain ones for a kind that is in no row. Any thread may call.
  static const KindTraits& of(const QString& kind);
};

}  // namespace tarnwick
