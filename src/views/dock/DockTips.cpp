// What the dock says of what is pointed at: names, and what a tile has no space for.

#include <QApplication>

#include "views/dock/DockView.h"
#include "views/dock/TipBubble.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

/// The tip of what the pointer is over, or of what the keyboard is at where it moved last.
std::optional<DockTip> DockView::pointedTip() const {
  if (keysLead_) return focusedItem() >= 0 ? tipOf(focusedItem(), std::nullopt) : std::nullopt;
  if (!pointer_ || !layout_.glass.contains(*pointer_)) return std::nullopt;
  if (const auto tab = layout_.tabAt(*pointer_)) {
    const QString name = tabs_.tip(*tab);
    if (name.isEmpty()) return std::nullopt;
    return DockTip{u"tab %1"_s.arg(*tab), name, glassBeside(layout_.tabs[*tab])};
  }
  const auto item = layout_.itemAt(*pointer_);
  return item ? tipOf(*item, pointer_) : std::nullopt;
}

std::optional<DockTip> DockView::tipOf(qsizetype item, std::optional<QPointF> point) const {
  if (!answersPointer(item)) return std::nullopt;
  const QRectF& tile = layout_.items[item].rect;
  const QString key = keyOf(item);
  const TileContent* content = contentOf(item);
  if (content && point)
    if (const auto part = content->namedPartAt(clickAt(item, *point))) {
      const QRectF place(tile.topLeft() + part->place.topLeft() * row_.scale, part->place.size() * row_.scale);
      return DockTip{u"%1 %2"_s.arg(key).arg(part->part), part->text, glassBeside(place)};
    }
  const QString text = itemText(item).tip();
  return text.isEmpty() ? std::nullopt : std::optional(DockTip{key, text, glassBeside(tile)});
}

TileClick DockView::clickAt(qsizetype item, QPointF point) const {
  const QRectF& tile = layout_.items[item].rect;
  return {tile.width() / row_.scale, (point - tile.topLeft()) / row_.scale, row_.scale, layoutDirection()};
}

/// Whether letting go of the tile now takes it off the dock: far from the glass, and over no other window of ours.
bool DockView::wouldRemove() const {
  if (!drag_.isAway()) return false;
  const QWidget* under = QApplication::topLevelAt(mapToGlobal(drag_.pointer().toPoint()));
  return !under || under == window() || qobject_cast<const TipBubble*>(under);
}

/// Nothing is said over what is open beside the dock, or while something is done with it.
void DockView::updateTip() {
  if (wouldRemove())
    tips_.say({u"remove"_s, tr("Remove"), QRect(drag_.pointer().toPoint(), QSize(1, 1))});
  else if (isHeld() || drop_ || menuOpen_ || !panelOpen_.isNull())
    tips_.dismiss();
  else
    tips_.point(pointedTip());
}

}  // namespace tarnwick
