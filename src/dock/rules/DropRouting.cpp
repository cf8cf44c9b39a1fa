#include "dock/rules/DropRouting.h"

#include "widgets/catalog/Family.h"
#include "widgets/catalog/KindTraits.h"

namespace tarnwick {

qsizetype DropRouting::indexAt(double x, const QList<Tile>& tiles, double spacing, double leadingInset) {
  double start = leadingInset;
  for (qsizetype i = 0; i < tiles.size(); ++i) {
    if (x >= start && x < start + tiles[i].width) return i;
    start += tiles[i].width + spacing;
  }
  return -1;
}

DropRouting::Target DropRouting::route(double x, const QList<Tile>& tiles, double spacing, double leadingInset,
                                       const IsFolder& isFolder) {
  const qsizetype at = indexAt(x, tiles, spacing, leadingInset);
  return at < 0 ? Target() : route(tiles[at], at, isFolder);
}

DropRouting::Target DropRouting::route(const Tile& tile, qsizetype at, const IsFolder& isFolder) {
  if (KindTraits::of(tile.kind).takes == TileTakes::Share) return {Target::Kind::AirDrop, -1, {}};
  const bool leadsToAFolder = tile.family == Family::Files && !tile.path.isEmpty() && isFolder(tile.path);
  return leadsToAFolder ? Target{Target::Kind::Folder, at, tile.path} : Target();
}

}  // namespace tarnwick
