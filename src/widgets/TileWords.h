#pragma once

#include <QCoreApplication>

namespace tarnwick {

/// Translates what tiles and their screen reader texts say: TileWords::tr("…").
class TileWords {
  Q_DECLARE_TR_FUNCTIONS(Tiles)
};

}  // namespace tarnwick
