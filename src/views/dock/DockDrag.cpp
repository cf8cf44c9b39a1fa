// A tile that is taken by the hand and put elsewhere in the row.

#include <algorithm>
#include <cmath>

#include "config/Reordering.h"
#include "views/dock/DockView.h"
#include "views/dock/SpringNames.h"
#include "views/theme/Theme.h"

namespace tarnwick {

void DockView::beginDrag(qsizetype item, const Press& press) {
  updateRow();
  pressed_ = -1;
  TileDrag drag;
  drag.key = keyOf(item);
  drag.from = drag.to = layout_.items[item].index;
  drag.grab = press.at.x() - layout_.items[item].rect.left();
  drag.pointer = press.at;
  drag.wanted = layout_;
  drag_ = drag;
  landing_.clear();
  springs_.jump(kGapSpring, layout_.items[item].rect.left());
  springs_.animate(kLiftSpring, theme::kDraggedLift * row_.scale);
  setPointer(press.at);
  // The dock has no keyboard of its own, but Escape must reach it.
  grabKeyboard();
  Q_EMIT dragStarted();
}

void DockView::dragTo(QPointF pointer) {
  TileDrag& drag = *drag_;
  drag.pointer = pointer;
  const double reach = theme::kDragAway * row_.scale;
  drag.away = !layout_.glass.adjusted(-reach, -reach, reach, reach).contains(pointer);
  const qsizetype item = layout_.itemOf(RowItem::Kind::Widget, drag.from);
  const double middle = draggedLeft(item) + layout_.items[item].rect.width() / 2;
  const auto rowWith = [&](qsizetype to) {
    DockRow row = row_;
    row.widgets = Reordering::reordered(row_.widgets, drag.from, to);
    return layoutOf(row);
  };
  const auto distance = [&](const RowLayout& row, qsizetype to) {
    return std::abs(row.items[row.itemOf(RowItem::Kind::Widget, to)].rect.center().x() - middle);
  };
  // From the place it has now towards the one whose middle is nearest.
  qsizetype to = drag.away ? drag.from : drag.to;
  RowLayout best = rowWith(to);
  for (const int direction : {1, -1}) {
    while (!drag.away && to + direction >= 0 && to + direction < row_.widgets.size()) {
      RowLayout next = rowWith(to + direction);
      if (distance(next, to + direction) >= distance(best, to)) break;
      to += direction;
      best = std::move(next);
    }
  }
  drag.to = to;
  drag.wanted = std::move(best);
  makeRoom();
  scrollAtEdges(pointer, true);
  updateRow();
  Q_EMIT dragMoved();
}

void DockView::makeRoom() {
  const TileDrag& drag = *drag_;
  const auto travel = [this](SpringSet& springs, const QString& name, double goal) {
    row_.reduceMotion ? springs.jump(name, goal) : springs.animate(name, goal);
  };
  for (qsizetype item = 0; item < layout_.items.size(); ++item) {
    const RowItem& place = layout_.items[item];
    qsizetype index = place.index;
    if (place.kind == RowItem::Kind::Widget && index != drag.from) {
      if (index > drag.from) --index;
      if (index >= drag.to) ++index;
    } else if (place.kind == RowItem::Kind::Widget) {
      continue;
    }
    const qsizetype wanted = drag.wanted.itemOf(place.kind, index);
    travel(shifts_, keyOf(item), drag.wanted.items[wanted].rect.left() - place.rect.left());
  }
  travel(springs_, kGapSpring, drag.wanted.items[drag.wanted.itemOf(RowItem::Kind::Widget, drag.to)].rect.left());
}

double DockView::draggedLeft(qsizetype item) const {
  const double width = layout_.items[item].rect.width();
  const QRectF room = layout_.glass;
  return std::clamp(drag_->pointer.x() - drag_->grab, room.left(), std::max(room.left(), room.right() - width));
}

void DockView::drop() {
  if (!drag_) return;  // Escape was faster.
  const qsizetype from = drag_->from;
  const qsizetype to = drag_->away ? from : drag_->to;
  letGo();
  const QList<DockWidget> before = row_.widgets;
  if (to != from) Q_EMIT reorderRequested(from, to);
  // Whoever refuses sends it home.
  if (row_.widgets == before) shifts_.settle();
}

void DockView::cancelDrag() {
  if (!drag_) return;
  press_.reset();
  letGo();
  shifts_.settle();
  Q_EMIT handLeft();
}

/// Ends the drag with everything where it is seen now.
void DockView::letGo() {
  const qsizetype item = layout_.itemOf(RowItem::Kind::Widget, drag_->from);
  shifts_.jump(drag_->key, draggedLeft(item) - layout_.items[item].rect.left());
  landing_ = drag_->key;
  drag_.reset();
  scrollAtEdges({}, false);
  if (row_.reduceMotion) {
    shifts_.clear();
    springs_.jump(kLiftSpring, 0);
    landing_.clear();
  } else {
    springs_.animate(kLiftSpring, 0);
  }
  releaseKeyboard();
  updateRow();
}

void DockView::scrollAtEdges(QPointF pointer, bool holding) {
  const double zone = theme::kEdgeZone * row_.scale;
  edge_ = 0;
  if (holding && layout_.overflow > 0) {
    const int right = layout_.mirrored ? -1 : 1;
    if (pointer.x() < layout_.glass.left() + zone) edge_ = -right;
    if (pointer.x() > layout_.glass.right() - zone) edge_ = right;
  }
  if (edge_ == 0)
    edgeScroll_.stop();
  else if (edgeScroll_.state() == QAbstractAnimation::Stopped && scroll_ != (edge_ < 0 ? 0 : layout_.overflow))
    edgeScroll_.start();
}

QHash<QString, double> DockView::visibleLefts() const {
  QHash<QString, double> lefts;
  if (!drag_ && landing_.isEmpty() && !shifts_.isMoving()) return lefts;
  for (qsizetype item = 0; item < layout_.items.size(); ++item)
    lefts.insert(keyOf(item), layout_.items[item].rect.left() + shifts_.value(keyOf(item)));
  return lefts;
}

/// After the row has changed under a tile's way: everything goes on from where it was seen.
void DockView::keepInPlace(const QHash<QString, double>& lefts) {
  if (lefts.isEmpty() || drag_) return;
  for (qsizetype item = 0; item < layout_.items.size(); ++item) {
    const QString key = keyOf(item);
    const auto left = lefts.constFind(key);
    if (left == lefts.constEnd()) continue;
    shifts_.jump(key, *left - layout_.items[item].rect.left());
    shifts_.animate(key, 0);
  }
}

}  // namespace tarnwick
