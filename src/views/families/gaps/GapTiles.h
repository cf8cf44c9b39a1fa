#pragma once

#include "views/tiles/TileRequest.h"
#include "views/tiles/TileText.h"

namespace tarnwick {

class TileCanvas;

/// A line between tiles; it has no ground of its own.
struct SeparatorContent {
  bool operator==(const SeparatorContent&) const = default;
};
SeparatorContent makeSeparator(const TileRequest& request);
TileText describe(const SeparatorContent& content, const QString& name);
void paint(TileCanvas& canvas, const SeparatorContent& content);
constexpr bool standsOnGround(const SeparatorContent&) { return false; }

/// Space between tiles; it has no ground of its own.
struct SpaceContent {
  bool operator==(const SpaceContent&) const = default;
};
SpaceContent makeSpace(const TileRequest& request);
TileText describe(const SpaceContent& content, const QString& name);
void paint(TileCanvas& canvas, const SpaceContent& content);
constexpr bool standsOnGround(const SpaceContent&) { return false; }

}  // namespace tarnwick
