#include "views/dock/PointedTips.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

std::optional<DockTip> PointedTips::at(QPointF point) const {
  const RowLayout& layout = tiles_.layout();
  if (!layout.glass.contains(point)) return std::nullopt;
  if (const auto tab = layout.tabAt(point)) {
    const QString name = tabs_.tip(*tab);
    if (name.isEmpty()) return std::nullopt;
    return DockTip{u"tab %1"_s.arg(*tab), name, shape_.beside(layout.tabs[*tab])};
  }
  const auto item = layout.itemAt(point);
  return item ? of(*item, point) : std::nullopt;
}

std::optional<DockTip> PointedTips::of(qsizetype item, std::optional<QPointF> point) const {
  if (!tiles_.answersPointer(item)) return std::nullopt;
  const QRectF tile = tiles_.place(item);
  const QString key = tiles_.keyOf(item);
  const TileContent* content = tiles_.contentOf(item);
  if (content && point)
    if (const auto part = content->namedPartAt(tiles_.clickAt(item, *point))) {
      const double scale = tiles_.row().scale;
      const QRectF place(tile.topLeft() + part->place.topLeft() * scale, part->place.size() * scale);
      return DockTip{u"%1 %2"_s.arg(key).arg(part->part), part->text, shape_.beside(place)};
    }
  const QString text = tiles_.textOf(item).tip();
  if (text.isEmpty()) return std::nullopt;
  return DockTip{key, text, shape_.beside(tile), tiles_.applicationOf(item)};
}

}  // namespace tarnwick
