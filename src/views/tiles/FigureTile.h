#pragma once

#include <QString>

#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// A symbol, a figure and what it is.
struct FigureContent {
  QString symbol;
  QString figure;  ///< dash() until it was read.
  QString unit;
  QString caption;
  bool compact = false;  ///< The symbol is closer, in a tile that is hardly wider than its figure.

  static QString dash() { return QStringLiteral("–"); }
  bool operator==(const FigureContent&) const = default;
};
TileText describe(const FigureContent& content, const QString& name);
void paint(TileCanvas& canvas, const FigureContent& content);

}  // namespace tarnwick
