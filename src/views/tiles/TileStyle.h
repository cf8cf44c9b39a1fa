#pragma once

#include <QPixmap>
#include <QString>
#include <functional>
#include <limits>

#include "views/theme/Palette.h"

namespace tarnwick {

enum class TileState { Rest, Hover, Pressed, PanelOpen, Dragged };

/// Gives the icon of an application, `size` units wide, for a screen with `ratio` device pixels per unit. Null where
/// there is none.
using TileIcons = std::function<QPixmap(const QString& icon, int size, double ratio)>;

/// How a tile is painted, whatever it shows.
struct TileStyle {
  Palette palette;
  Accent accent = Accent::Blue;
  double scale = 1;          ///< Of the dock: how many units of the painter a unit of the tile takes.
  double magnification = 1;  ///< Of this drawing alone, around its centre.
  /// How far a magnified ground may reach beyond the tile's place at either side; its neighbours grow too.
  double sideRoom = std::numeric_limits<double>::infinity();
  bool grounded = true;  ///< Whether the ground is painted with the tile.
  TileState state = TileState::Rest;
  /// In which people read. Where that is from right to left, what a tile holds is mirrored.
  Qt::LayoutDirection direction = Qt::LeftToRight;
  bool focused = false;              ///< By the keyboard.
  bool filled = true;                ///< Whether the tile has a ground at rest.
  bool takesDrop = false;            ///< Something is held over the tile that it would take.
  bool failed = false;               ///< Not all that the tile shows could be read.
  bool editing = false;              ///< The row is being rearranged, so that even empty space has an outline.
  double lift = 1;                   ///< How far a dragged tile has left the row.
  double iconOpacity = 1;            ///< Of application icons, for the pulse of one that starts.
  double loading = 0.5;              ///< Where on its way the mark of a fetch is, from 0 to 1; at rest in the middle.
  const TileIcons* icons = nullptr;  ///< Borrowed for the length of a call.
};

}  // namespace tarnwick
