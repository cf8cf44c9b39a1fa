#include "views/dock/TileDragController.h"

#include <algorithm>
#include <cmath>

#include "config/Reordering.h"
#include "views/theme/Theme.h"

namespace tarnwick {

namespace {

const QString kLift = QStringLiteral("lift");  // How far the tile is above the row.
const QString kGap = QStringLiteral("gap");    // The left edge of the place that is kept for it.

}  // namespace

TileDragController::TileDragController(const DockRow& row, const RowLayout& layout, Animator& animator,
                                       EdgeScroll& edges, std::function<RowLayout(const DockRow& row)> layoutOf)
    : row_(row), layout_(layout), edges_(edges), layoutOf_(std::move(layoutOf)), shifts_(animator), springs_(animator) {
  connect(&shifts_, &SpringSet::moved, this, &TileDragController::moved);
  connect(&springs_, &SpringSet::moved, this, &TileDragController::moved);
  connect(&springs_, &SpringSet::rested, this, [this] {
    if (!isLanding()) return;
    landing_.clear();
    Q_EMIT landed();
  });
}

void TileDragController::setRatio(double ratio) {
  shifts_.setRatio(ratio);
  springs_.setRatio(ratio);
}

void TileDragController::setReduced(bool reduced) {
  shifts_.setReduced(reduced);
  springs_.setReduced(reduced);
}

void TileDragController::begin(qsizetype item, QPointF at) {
  const RowItem& place = layout_.items[item];
  Drag drag;
  drag.key = keyOf(item);
  drag.from = drag.to = place.index;
  drag.grab = at.x() - place.rect.left();
  drag.pointer = at;
  drag.wanted = layout_;
  drag_ = drag;
  landing_.clear();
  springs_.jump(kGap, place.rect.left());
  springs_.animate(kLift, theme::kDraggedLift * row_.scale);
}

void TileDragController::moveTo(QPointF pointer) {
  drag_->pointer = pointer;
  constexpr double reach = theme::kDragAway;
  drag_->away = !layout_.glass.adjusted(-reach, -reach, reach, reach).contains(pointer);
  findPlace();
  openGap();
  edges_.hold(pointer);
}

/// From the place it has now towards the one whose middle is nearest.
void TileDragController::findPlace() {
  Drag& drag = *drag_;
  const qsizetype item = layout_.itemOf(RowItem::Kind::Widget, drag.from);
  const double middle = draggedLeft(item) + layout_.items[item].rect.width() / 2;
  const auto rowWith = [&](qsizetype to) {
    DockRow row = row_;
    row.widgets = Reordering::reordered(row_.widgets, drag.from, to);
    return layoutOf_(row);
  };
  const auto distance = [&](const RowLayout& row, qsizetype to) {
    return std::abs(row.seenMiddle(row.items[row.itemOf(RowItem::Kind::Widget, to)]) - middle);
  };
  qsizetype to = drag.away ? drag.from : drag.to;
  RowLayout best = rowWith(to);
  for (const int direction : {1, -1}) {
    for (qsizetype at = to + direction; !drag.away && at >= 0 && at < row_.widgets.size(); at += direction) {
      RowLayout next = rowWith(at);
      const double nearer = distance(best, to) - distance(next, at);
      // Where a row scrolls, those of an end that stays may be nearer than what is scrolled below it.
      if (nearer < 0 && layout_.overflow <= 0) break;
      if (nearer <= 0) continue;
      to = at;
      best = std::move(next);
    }
  }
  drag.to = to;
  drag.wanted = std::move(best);
}

QPointF TileDragController::beyond() const {
  if (!isActive()) return {};
  const QRectF& glass = layout_.glass;
  const QPointF& at = drag_->pointer;
  return at - QPointF(std::clamp(at.x(), glass.left(), glass.right()), std::clamp(at.y(), glass.top(), glass.bottom()));
}

void TileDragController::openGap() {
  const Drag& drag = *drag_;
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
  travel(springs_, kGap, drag.wanted.items[drag.wanted.itemOf(RowItem::Kind::Widget, drag.to)].rect.left());
}

double TileDragController::draggedLeft(qsizetype item) const {
  const double width = layout_.items[item].rect.width();
  const QRectF bounds = layout_.glass;
  return std::clamp(drag_->pointer.x() - drag_->grab, bounds.left(), std::max(bounds.left(), bounds.right() - width));
}

std::optional<std::pair<qsizetype, qsizetype>> TileDragController::drop() {
  const qsizetype item = layout_.itemOf(RowItem::Kind::Widget, drag_->from);
  const qsizetype from = drag_->from;
  const qsizetype to = drag_->away ? from : drag_->to;
  // Everything goes on from where it is seen now.
  shifts_.jump(drag_->key, draggedLeft(item) - layout_.items[item].rect.left());
  landing_ = drag_->key;
  drag_.reset();
  edges_.letGo();
  if (row_.reduceMotion) {
    shifts_.clear();
    springs_.jump(kLift, 0);
    landing_.clear();
  } else {
    springs_.animate(kLift, 0);
  }
  return from == to ? std::nullopt : std::optional(std::pair(from, to));
}

QHash<QString, double> TileDragController::lefts() const {
  QHash<QString, double> lefts;
  for (qsizetype item = 0; item < layout_.items.size(); ++item)
    lefts.insert(keyOf(item), layout_.items[item].rect.left() + shifts_.value(keyOf(item)));
  return lefts;
}

void TileDragController::carryOn(const QHash<QString, double>& lefts) {
  if (lefts.isEmpty() || drag_) return;
  for (qsizetype item = 0; item < layout_.items.size(); ++item) {
    const QString key = keyOf(item);
    const auto left = lefts.constFind(key);
    if (left == lefts.constEnd()) continue;
    shifts_.jump(key, *left - layout_.items[item].rect.left());
    shifts_.animate(key, 0);
  }
}

bool TileDragController::isLifted(qsizetype item) const {
  const RowItem& place = layout_.items[item];
  if (drag_) return place.kind == RowItem::Kind::Widget && place.index == drag_->from;
  return isLanding() && keyOf(item) == landing_;
}

qsizetype TileDragController::liftedItem() const {
  if (drag_) return layout_.itemOf(RowItem::Kind::Widget, drag_->from);
  return isLanding() ? itemWithKey(row_, layout_, landing_) : -1;
}

double TileDragController::lift() const { return springs_.value(kLift) / (theme::kDraggedLift * row_.scale); }

double TileDragController::shiftOf(qsizetype item) const {
  if (holds(item)) return draggedLeft(item) - layout_.items[item].rect.left();
  return drag_ || shifts_.isMoving() ? shifts_.value(keyOf(item)) : 0;
}

QRectF TileDragController::gap() const {
  const QSizeF size = layout_.items[layout_.itemOf(RowItem::Kind::Widget, drag_->from)].rect.size();
  return {QPointF(std::round(springs_.value(kGap)), layout_.items[0].rect.top()), size};
}

}  // namespace tarnwick
