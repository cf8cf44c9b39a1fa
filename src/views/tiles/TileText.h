#pragma once

#include <QString>

namespace tarnwick {

/// What a tile says in words: to a screen reader, and in its tip, where nothing is shortened.
struct TileText {
  QString name;   ///< What the tile is.
  QString value;  ///< What it shows now; may be empty.
  /// A finished sentence about what it could not read of that; empty where there is nothing.
  QString problem = {};

  QString spoken() const {
    if (problem.isEmpty() || value.contains(problem)) return value;
    return value.isEmpty() ? problem : QStringLiteral("%1. %2").arg(value, problem);
  }
  QString tip() const { return spoken().isEmpty() ? name : QStringLiteral("%1: %2").arg(name, spoken()); }
  bool operator==(const TileText&) const = default;
};

}  // namespace tarnwick
