#include "views/dock/PressController.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>
#include <cmath>
#include <utility>

namespace tarnwick {

void PressController::begin(const QMouseEvent& event, qsizetype hovered) {
  Press press;
  press.at = event.position();
  press.global = event.globalPosition().toPoint();
  press.flick.add(event.position().x(), event.timestamp());
  if (takeArrow(press, event)) {
    hovered = -1;
  } else if (const auto tab = tiles_.layout().tabAt(event.position())) {
    press.on = Press::On::Tab;
    press.tab = *tab;
  } else if (const auto item = tiles_.layout().itemAt(event.position())) {
    press.on = Press::On::Item;
    press.key = tiles_.keyOf(*item);
  }
  press_ = press;
  holdSoon();
  pressed_ = hovered;
  Q_EMIT changed(pressed_);
}

/// The arrow goes with the click that turns to the row's end. Who clicks once more meant the arrow, and not the tile
/// that is there now.
bool PressController::takeArrow(Press& press, const QMouseEvent& event) {
  const RowLayout& layout = tiles_.layout();
  const quint64 now = event.timestamp();
  const auto again = static_cast<quint64>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
  press.arrow = layout.arrowAt(event.position());
  if (press.arrow != 0)
    arrow_ = Arrow{press.arrow < 0 ? layout.backArrow : layout.onArrow, now};
  else if (!arrow_ || !arrow_->place.contains(event.position()) || now > arrow_->time + again)
    return false;
  arrow_->time = now;
  press.on = Press::On::Arrow;
  return true;
}

/// An application whose button stays down shows its windows, and the press is no click any more.
void PressController::holdSoon() {
  hold_.reset();
  if (press_->on != Press::On::Item) return;
  hold_ = scheduler_.after(Press::kHold, [this] {
    if (!press_ || press_->gesture != Press::Gesture::Nothing) return;
    const qsizetype item = tiles_.itemWithKey(press_->key);
    if (tiles_.applicationOf(item) == 0) return;
    forget();
    Q_EMIT held(item);
    Q_EMIT released();
  });
}

bool PressController::move(const QMouseEvent& event) {
  if (!press_ || !event.buttons().testFlag(Qt::LeftButton)) return false;
  press_->flick.add(event.globalPosition().x(), event.timestamp());
  if (press_->gesture == Press::Gesture::Nothing) {
    press_->gesture = gestureOf(*press_, event.position());
    if (isBeyondSlop(*press_, event.position())) hold_.reset();  // What moves is not held.
    if (press_->gesture == Press::Gesture::Drag) {
      pressed_ = -1;
      Q_EMIT dragBegun(tiles_.itemWithKey(press_->key), press_->at);
      if (!press_) return true;
    }
  }
  switch (press_->gesture) {
    case Press::Gesture::Nothing:
      return false;
    case Press::Gesture::Drag:
      Q_EMIT dragged(event.position());
      break;
    case Press::Gesture::Swipe:
      Q_EMIT swiped(event.position().x() - press_->at.x());
      break;
    case Press::Gesture::Move: {
      // On the screen, since the view itself moves along.
      const QPoint global = event.globalPosition().toPoint();
      Q_EMIT moved(global - std::exchange(press_->global, global));
      break;
    }
  }
  return true;
}

bool PressController::isBeyondSlop(const Press& press, QPointF point) {
  const QPointF way = point - press.at;
  return QPointF::dotProduct(way, way) >= Press::kSlop * Press::kSlop;
}

Press::Gesture PressController::gestureOf(const Press& press, QPointF point) const {
  if (!isBeyondSlop(press, point)) return Press::Gesture::Nothing;
  const QPointF way = point - press.at;
  const DockRow& row = tiles_.row();
  if (press.on == Press::On::Item && tiles_.widgetOf(tiles_.itemWithKey(press.key))) return Press::Gesture::Drag;
  if (press.on != Press::On::Glass) return Press::Gesture::Nothing;
  if (row.floats) return Press::Gesture::Move;
  const bool swipes = row.swipes && row.tabs.size() > 1 && std::abs(way.x()) > std::abs(way.y());
  return swipes && !(isBusy_ && isBusy_()) ? Press::Gesture::Swipe : Press::Gesture::Nothing;
}

void PressController::end(const QMouseEvent& event) {
  if (!press_) return;
  const Press press = *press_;
  forget();
  const QPointF point = event.position();
  switch (press.gesture) {
    case Press::Gesture::Nothing:
      Q_EMIT pointed(point);
      if (press.on == Press::On::Arrow)
        endOnArrow(press, event);
      else if (isOver(press, point))
        Q_EMIT clicked(point);
      break;
    case Press::Gesture::Drag:
      Q_EMIT dropped();
      Q_EMIT pointed(point);
      break;
    case Press::Gesture::Swipe:
      Q_EMIT swipeEnded(point.x() - press.at.x(), press.flick.velocity(event.timestamp()));
      Q_EMIT pointed(point);
      break;
    case Press::Gesture::Move:
      Q_EMIT moveEnded();
      Q_EMIT pointed(point);
      break;
  }
  Q_EMIT released();
}

void PressController::endOnArrow(const Press& press, const QMouseEvent& event) {
  arrow_->time = event.timestamp();
  if (press.arrow != 0 && arrow_->place.contains(event.position())) Q_EMIT arrowClicked(press.arrow);
}

void PressController::abandon() {
  if (!press_) return;
  const Press::Gesture gesture = press_->gesture;
  forget();
  if (gesture == Press::Gesture::Move) Q_EMIT moveEnded();
  Q_EMIT released();
}

void PressController::forget() {
  press_.reset();
  Q_EMIT changed(std::exchange(pressed_, -1));
}

void PressController::beginMiddle(QPointF point) { middle_ = tiles_.layout().itemAt(point).value_or(-1); }

std::optional<qsizetype> PressController::endMiddle(QPointF point) {
  const qsizetype item = std::exchange(middle_, -1);
  return item >= 0 && tiles_.layout().itemAt(point) == item ? std::optional(item) : std::nullopt;
}

void PressController::takeRow() { pressed_ = middle_ = -1; }

void PressController::clamp() {
  if (pressed_ >= tiles_.count()) pressed_ = -1;
}

void PressController::follow() {
  if (press_ && press_->on == Press::On::Item) pressed_ = tiles_.itemWithKey(press_->key);
}

/// Whether the pointer is still over what was pressed.
bool PressController::isOver(const Press& press, QPointF point) const {
  const auto item = tiles_.layout().itemAt(point);
  switch (press.on) {
    case Press::On::Tab:
      return tiles_.layout().tabAt(point) == press.tab;
    case Press::On::Item:
      return item && tiles_.keyOf(*item) == press.key;
    case Press::On::Arrow:
      return false;
    case Press::On::Glass:
      break;
  }
  return !item && !tiles_.layout().tabAt(point);
}

}  // namespace tarnwick
