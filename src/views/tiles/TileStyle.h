#pragma once

#include "views/theme/Palette.h"

namespace tarnwick {

enum class TileState { Rest, Hover, Pressed, PanelOpen, Dragged };

/// How a tile is painted, whatever it shows.
struct TileStyle {
  Palette palette;
  Accent accent = Accent::Blue;
  double scale = 1;          ///< Of the dock: how many units of the painter a unit of the tile takes.
  double magnification = 1;  ///< Of this drawing alone, around its centre.
  TileState state = TileState::Rest;
  bool focused = false;  ///< By the keyboard.
  bool filled = true;    ///< Whether the tile has a ground at rest.
};

}  // namespace tarnwick
