#include "views/dock/DockShape.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "views/theme/Glass.h"
#include "views/theme/Theme.h"

namespace tarnwick {

double DockShape::corner() const { return theme::kDockCorner * tiles_.row().scale; }

QRectF DockShape::fullGlass() const {
  const QRectF& glass = tiles_.layout().glass;
  if (!tabs_.areMoving()) return glass;
  const double grown = theme::kDockHeightWithTabs * tiles_.row().scale - glass.height();
  return tiles_.row().edge == Edge::Bottom ? glass.adjusted(0, -grown, 0, 0) : glass.adjusted(0, 0, 0, grown);
}

QRegion DockShape::outline() const {
  // A dock without glass has the shape of what is in it. Where nothing composites that would cut what is dragged over
  // it, and the mark of where it goes.
  if (isWhole()) return inputRegion();
  const RowLayout& layout = tiles_.layout();
  const double tileCorner = theme::kTileCorner * tiles_.row().scale;
  QRegion region;
  if (tiles_.invites()) region = Glass::outline(invitation().toAlignedRect(), tileCorner);
  for (const QRectF& plate : layout.plates(tiles_.row())) region += Glass::outline(plate.toAlignedRect(), tileCorner);
  for (const QRectF& tab : layout.tabs) region += Glass::outline(tab.toAlignedRect(), tab.height() / 2);
  for (const QRectF& arrow : {layout.backArrow, layout.onArrow})
    if (!arrow.isEmpty()) region += Glass::outline(arrow.toAlignedRect(), tileCorner);
  for (const QRectF& line : layout.lines(tiles_.row(), tiles_.ratio())) region += line.toAlignedRect();
  return region;
}

QRegion DockShape::inputRegion() const { return Glass::outline(fullGlass().toAlignedRect(), corner()); }

QMargins DockShape::margins() const {
  if (!tiles_.row().composited) return {};
  QMargins space = Glass::margins(tiles_.palette().glass, tiles_.row().scale);
  const int lift = static_cast<int>(std::ceil((theme::kDraggedLift + 4) * tiles_.row().scale));
  space.setTop(std::max(space.top(), lift));
  return space;
}

QSize DockShape::sizeHint() const {
  const DockRow& row = tiles_.row();
  const double height = row.keepsSpaceForTabs() ? theme::kDockHeightWithTabs : theme::kDockHeight;
  const int width = static_cast<int>(std::ceil(RowLayout::idealWidth(row)));
  return QSize(width, static_cast<int>(std::ceil(height * row.scale))).grownBy(margins());
}

QRect DockShape::beside(const QRectF& place) const {
  const QRectF glass = fullGlass();
  QRectF beside = place;
  beside.setTop(glass.top());
  beside.setBottom(glass.bottom());
  return beside.toAlignedRect();
}

QRectF DockShape::invitation() const {
  const RowLayout& layout = tiles_.layout();
  if (!layout.invitation.isEmpty()) return layout.invitation;
  const double inset = theme::kInset / 2 * tiles_.row().scale;  // The words reach closer to the edge than tiles do.
  return layout.glass.adjusted(inset, inset, -inset, -inset);
}

QRectF DockShape::rowBand() const {
  const double space = (theme::kDraggedLift + 16) * tiles_.row().scale;
  return tiles_.layout().glass.adjusted(-space, -space, space, space) & QRectF(tiles_.surface().rect());
}

bool DockShape::takeLayout(bool isRearranged) {
  const QRectF before = std::exchange(glass_, fullGlass());
  return glass_ != before || (!hasGlass() && isRearranged);
}

bool DockShape::takeWhole() {
  const bool before = std::exchange(wasWhole_, isWhole());
  return before != wasWhole_;
}

}  // namespace tarnwick
