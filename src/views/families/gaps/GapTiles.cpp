#include "views/families/gaps/GapsRoom.h"
#include "views/theme/ClearMarks.h"
#include "views/tiles/TileCanvas.h"

namespace tarnwick {

namespace {

struct SeparatorContent {
  bool operator==(const SeparatorContent&) const = default;
};
TileText describe(const SeparatorContent&, const QString& name) { return {name, {}}; }
constexpr bool standsOnGround(const SeparatorContent&) { return false; }

void paint(TileCanvas& canvas, const SeparatorContent&) {
  const double top = theme::kTileMiddle - theme::kSeparatorHeight / 2;
  const QRectF line = canvas.snapped(QRectF(canvas.width() / 2 - 0.5, top, 1, theme::kSeparatorHeight));
  ClearMarks::drawLine(canvas.painter(), line, canvas.colors().separator, canvas.colors());
}

struct SpaceContent {
  bool operator==(const SpaceContent&) const = default;
};
TileText describe(const SpaceContent&, const QString& name) { return {name, {}}; }
constexpr bool standsOnGround(const SpaceContent&) { return false; }

void paint(TileCanvas& canvas, const SpaceContent&) {
  if (!canvas.isEditing()) return;
  const QRectF place = canvas.snapped(QRectF(0, 0, canvas.width(), theme::kTileHeight));
  ClearMarks::drawGap(canvas.painter(), place, theme::kTileCorner, canvas.colors());
}

}  // namespace

TileContent makeSeparator(const TileRequest&) { return SeparatorContent(); }

TileContent makeSpace(const TileRequest&) { return SpaceContent(); }

}  // namespace tarnwick
