// The pointer over the dock: hover, clicks, the wheel and menus.

#include <QContextMenuEvent>
#include <QCursor>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "views/dock/DockView.h"
#include "views/theme/Theme.h"
#include "views/theme/Typography.h"

namespace tarnwick {

bool DockView::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::ApplicationFontChange:
    case QEvent::FontChange:
      Typography::reload();
      pictures_.clear();
      relayout();
      break;
    case QEvent::StyleChange:  // With it, the theme of the icons may have changed.
      forgetIcons();
      break;
    case QEvent::Enter:  // The dock may come to a pointer that rests.
      if (!drag_.isActive()) setPointer(static_cast<QEnterEvent*>(event)->position());
      break;
    case QEvent::LayoutDirectionChange:
      pictures_.clear();
      relayout();
      break;
    case QEvent::Show:
    case QEvent::ScreenChangeInternal:  // The new screen may have other pixels.
      relayout();
      break;
    default:
      break;
  }
  return QWidget::event(event);
}

void DockView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  relayout();
}

void DockView::hideEvent(QHideEvent* event) {
  cancelDrag();
  clearDrop();
  // No button will come up here any more.
  const auto press = std::exchange(press_, std::nullopt);
  setPointer(std::nullopt);
  tips_.leave();
  QWidget::hideEvent(event);
  if (!press) return;
  if (press->gesture == Press::Gesture::Move) Q_EMIT moveFinished();
  Q_EMIT released();
}

// --- Hover ----------------------------------------------------------------------------------------------------------

void DockView::setPointer(std::optional<QPointF> pointer) {
  const bool inside = pointer && layout_.glass.contains(*pointer);
  const qsizetype under = inside ? layout_.itemAt(*pointer).value_or(-1) : -1;
  const qsizetype before = hovered_;
  if (invites()) update();
  if (pointer && pointer != pointer_) keysLead_ = false;
  pointer_ = pointer;
  hovered_ = answersPointer(under) && !drag_.isActive() && !drop_ ? under : -1;
  hoverTabs(inside);
  if (before != hovered_) {
    updateItem(before);
    updateItem(hovered_);
  }
  magnifier_.point(inside && !drag_.isActive() && !drop_ ? std::optional(pointer->x()) : std::nullopt);
  updateTip();
}

/// From now on tiles are drawn with their pictures, until a moment after the last such call.
void DockView::noteMotion() { rest_.restart(); }

void DockView::comeToRest() {
  pictures_.clear();
  for (qsizetype item = 0; item < layout_.items.size(); ++item)
    if (tileFactor(styleOf(item)) != 1) updateItem(item);
}

void DockView::rehover() {
  // The row may have changed under a pointer that stands still.
  if (pointer_) setPointer(pointer_);
  if (press_ && press_->on == Press::On::Item) pressed_ = itemWithKey(press_->key);
}

void DockView::hoverTabs(bool inside) { tabs_.hover(inside, menuOpen_ || !panelOpen_.isNull()); }

/// What is above the glass should not see it grow or shrink.
void DockView::holdTabs() { hoverTabs(pointer_ && layout_.glass.contains(*pointer_)); }

void DockView::showTabs(bool shown) {
  if (tabs_.show(shown, isVisible())) relayout();
}

void DockView::setMenuOpen(bool open) {
  menuOpen_ = open;
  // While it was open the pointer was the menu's, and nobody tells where that left it.
  const QPointF pointer = mapFromGlobal(QCursor::pos());
  if (!open && !drag_.isActive()) setPointer(layout_.glass.contains(pointer) ? std::optional(pointer) : std::nullopt);
  holdTabs();
  updateTip();
}

void DockView::leaveEvent(QEvent*) {
  if (!drag_.isActive()) setPointer(std::nullopt);
}

// --- Buttons --------------------------------------------------------------------------------------------------------

void DockView::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) middlePressed_ = layout_.itemAt(event->position()).value_or(-1);
  if (event->button() != Qt::LeftButton || drag_.isActive()) return;
  setPointer(event->position());
  if (!layout_.glass.contains(event->position())) return;
  Press press;
  press.at = event->position();
  press.global = event->globalPosition().toPoint();
  press.flick.add(event->position().x(), event->timestamp());
  if (const auto tab = layout_.tabAt(event->position())) {
    press.on = Press::On::Tab;
    press.tab = *tab;
  } else if (const auto item = layout_.itemAt(event->position())) {
    press.on = Press::On::Item;
    press.key = keyOf(*item);
  }
  press_ = press;
  holdPressed();
  updateTip();
  if (invites()) update();
  pressed_ = hovered_;
  updateItem(pressed_);
}

/// An application whose button stays down shows its windows, and the press is no click any more.
void DockView::holdPressed() {
  hold_.reset();
  if (press_->on != Press::On::Item || !scheduler_) return;
  hold_ = scheduler_->after(Press::kHold, [this] {
    if (!press_ || press_->gesture != Press::Gesture::Nothing) return;
    const qsizetype item = itemWithKey(press_->key);
    const quint64 application = applicationOf(item);
    if (application == 0) return;
    updateItem(std::exchange(pressed_, -1));
    press_.reset();
    Q_EMIT windowsRequested(application, glassBeside(layout_.items[item].rect));
    Q_EMIT released();
  });
}

void DockView::mouseMoveEvent(QMouseEvent* event) {
  if (!press_ || !event->buttons().testFlag(Qt::LeftButton)) {
    setPointer(event->position());
    return;
  }
  Press& press = *press_;
  press.flick.add(event->globalPosition().x(), event->timestamp());
  if (press.gesture == Press::Gesture::Nothing) startGesture(press, *event);
  switch (press.gesture) {
    case Press::Gesture::Nothing:
      setPointer(event->position());
      break;
    case Press::Gesture::Drag:
      dragTo(event->position());
      break;
    case Press::Gesture::Swipe:
      tabs_.swipeBy(event->position().x() - press.at.x());
      break;
    case Press::Gesture::Move: {
      // On the screen, since the view itself moves along.
      const QPoint global = event->globalPosition().toPoint();
      Q_EMIT moveRequested(global - std::exchange(press.global, global));
      break;
    }
  }
}

void DockView::startGesture(Press& press, const QMouseEvent& event) {
  const QPointF way = event.position() - press.at;
  if (QPointF::dotProduct(way, way) < Press::kSlop * Press::kSlop) return;
  const qsizetype item = itemWithKey(press.key);
  if (press.on == Press::On::Item && widgetOf(item)) {
    press.gesture = Press::Gesture::Drag;
    beginDrag(item, press);
  } else if (press.on == Press::On::Glass && row_.floats) {
    press.gesture = Press::Gesture::Move;
  } else if (press.on == Press::On::Glass && row_.swipes && row_.tabs.size() > 1 &&
             std::abs(way.x()) > std::abs(way.y()) && !(switchGuard_ && switchGuard_())) {
    press.gesture = Press::Gesture::Swipe;
  }
}

void DockView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) {
    const qsizetype item = std::exchange(middlePressed_, -1);
    if (item < 0 || layout_.itemAt(event->position()) != item) return;
    const DockWidget* widget = widgetOf(item);
    const bool launches = widget && DropRules::takerOf(*widget) == DropRules::Taker::Application;
    if (launches || appOf(item)) Q_EMIT newWindowRequested(widget ? widget->id : QUuid(), applicationOf(item));
    return;
  }
  if (event->button() != Qt::LeftButton || !press_) return;
  const Press press = *press_;
  press_.reset();
  endGesture(press, *event);
  Q_EMIT released();
}

void DockView::endGesture(const Press& press, const QMouseEvent& event) {
  const qsizetype pressed = std::exchange(pressed_, -1);
  updateItem(pressed);
  switch (press.gesture) {
    case Press::Gesture::Nothing:
      setPointer(event.position());
      if (isOver(press, event.position())) click(event.position());
      return;
    case Press::Gesture::Drag:
      drop();
      break;
    case Press::Gesture::Swipe:
      tabs_.endSwipe(event.position().x() - press.at.x(), press.flick.velocity(event.timestamp()));
      break;
    case Press::Gesture::Move:
      Q_EMIT moveFinished();
      break;
  }
  setPointer(event.position());
}

/// Whether the pointer is still over what was pressed.
bool DockView::isOver(const Press& press, QPointF point) const {
  const auto item = layout_.itemAt(point);
  switch (press.on) {
    case Press::On::Tab:
      return layout_.tabAt(point) == press.tab;
    case Press::On::Item:
      return item && keyOf(*item) == press.key;
    case Press::On::Glass:
      break;
  }
  return !item && !layout_.tabAt(point);
}

void DockView::click(QPointF point) {
  if (const auto tab = layout_.tabAt(point)) {
    Q_EMIT tabActivated(*tab);
    return;
  }
  const auto item = layout_.itemAt(point);
  if (!item) {
    if (row_.widgets.isEmpty() && layout_.glass.contains(point)) Q_EMIT addWidgetsRequested();
    return;
  }
  if (const TileContent* content = contentOf(*item)) {
    if (const auto part = content->partAt(clickAt(*item, point))) {
      Q_EMIT tilePartActivated(widgetOf(*item)->id, *part);
      return;
    }
  }
  activateItem(*item);
}

// --- Wheel ----------------------------------------------------------------------------------------------------------

void DockView::wheelEvent(QWheelEvent* event) {
  event->accept();
  if (drag_.isActive() || tabs_.turn(*event) || cycleWindows(*event)) return;
  if (layout_.overflow <= 0) {
    event->ignore();
    return;
  }
  const QPointF pixels = event->pixelDelta().isNull() ? QPointF(event->angleDelta()) / 2 : QPointF(event->pixelDelta());
  // Sideways the row goes where the fingers do.
  const double sideways = layout_.mirrored ? -pixels.x() : pixels.x();
  scrollBy(-(std::abs(pixels.x()) > std::abs(pixels.y()) ? sideways : pixels.y()));
  setPointer(event->position());
}

bool DockView::cycleWindows(const QWheelEvent& event) {
  const QPoint turned = event.angleDelta();
  const bool sideways = std::abs(turned.x()) > std::abs(turned.y()) || event.modifiers().testFlag(Qt::ShiftModifier);
  const qsizetype item = layout_.itemAt(event.position()).value_or(-1);
  const quint64 application = applicationOf(item);
  if (sideways || application == 0) {
    wheel_.reset();
    return false;
  }
  const int steps = wheel_.steps(item, turned.y());
  for (int step = 0; step < std::abs(steps); ++step) Q_EMIT cycleWindowsRequested(application, steps > 0 ? -1 : 1);
  return true;
}

bool DockView::scrollBy(double units) {
  const double scroll = std::clamp(scroll_ + units, 0.0, layout_.overflow);
  if (scroll == scroll_) return false;
  scroll_ = scroll;
  relayout();
  if (drag_.isActive()) dragTo(drag_.pointer());
  return true;
}

// --- A tile that is dragged ------------------------------------------------------------------------------------------

void DockView::beginDrag(qsizetype item, const Press& press) {
  updateRow();
  pressed_ = -1;
  drag_.begin(item, press.at);
  setPointer(press.at);
  // The dock has no keyboard of its own, but Escape must reach it.
  grabKeyboard();
  Q_EMIT dragStarted();
}

void DockView::dragTo(QPointF pointer) {
  drag_.moveTo(pointer);
  updateRow();
  updateTip();
  Q_EMIT dragMoved();
}

void DockView::drop() {
  if (!drag_.isActive()) return;  // Escape was faster.
  const bool removes = wouldRemove();
  const QUuid held = row_.widgets[drag_.widget()].id;
  const auto move = drag_.drop();
  releaseKeyboard();
  tips_.dismiss();
  updateRow();
  const QList<DockWidget> before = row_.widgets;
  if (removes) Q_EMIT removalRequested(held);
  if (move) Q_EMIT reorderRequested(move->first, move->second);
  // Whoever refuses sends it home.
  if (row_.widgets == before) drag_.settle();
}

void DockView::cancelDrag() {
  if (!drag_.isActive()) return;
  press_.reset();
  drag_.drop();
  releaseKeyboard();
  tips_.dismiss();
  updateRow();
  drag_.settle();
  Q_EMIT released();
}

// --- Menus ----------------------------------------------------------------------------------------------------------

void DockView::openMenu(qsizetype item, const QRect& beside) {
  if (const DockWidget* widget = widgetOf(item))
    Q_EMIT contextMenuRequested(widget->id, beside);
  else if (const DockApp* app = appOf(item))
    Q_EMIT applicationMenuRequested(app->id, beside);
  else
    Q_EMIT contextMenuRequested(QUuid(), beside);
}

void DockView::openItemMenu(qsizetype item) {
  const QRectF place = item >= 0 && item < layout_.items.size() ? layout_.items[item].rect : layout_.glass;
  openMenu(item, glassBeside(place));
}

void DockView::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  if (drag_.isActive()) return;
  if (event->reason() == QContextMenuEvent::Keyboard) {
    openItemMenu(focused_);
  } else {
    openMenuAt(event->pos());
  }
}

void DockView::openMenuAt(QPoint point) {
  if (!layout_.glass.contains(point)) return;
  const auto item = layout_.itemAt(point);
  item ? openItemMenu(*item) : openMenu(-1, glassBeside(QRect(point, QSize(1, 1))));
}

}  // namespace tarnwick
