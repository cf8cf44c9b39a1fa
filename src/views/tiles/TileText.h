#pragma once

#include <QString>

namespace tarnwick {

/// What a tile says in words: to a screen reader, and in its tip, where nothing is shortened.
struct TileText {
  QString name;   ///< What the tile is.
  QString value;  ///< What it shows now; may be empty.

  QString tip() const { return value.isEmpty() ? name : QStringLiteral("%1: %2").arg(name, value); }
  bool operator==(const TileText&) const = default;
};

}  // namespace tarnwick
