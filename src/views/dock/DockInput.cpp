#include <QAccessible>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>

#include "views/dock/DockView.h"
#include "views/theme/Theme.h"
#include "views/theme/Typography.h"

namespace tarnwick {

bool DockView::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::ToolTip: {
      const auto* help = static_cast<QHelpEvent*>(event);
      const auto item = layout_.itemAt(help->pos());
      if (item && answersPointer(*item))
        QToolTip::showText(help->globalPos(), itemText(*item).tip(), this, layout_.items[*item].rect.toAlignedRect());
      else
        QToolTip::hideText();
      return true;
    }
    case QEvent::ApplicationFontChange:
    case QEvent::FontChange:
      Typography::reload();
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

void DockView::setPointer(std::optional<QPointF> pointer) {
  const bool inside = pointer && layout_.glass.contains(*pointer);
  const qsizetype under = inside ? layout_.itemAt(*pointer).value_or(-1) : -1;
  const qsizetype before = hovered_;
  hovered_ = answersPointer(under) ? under : -1;
  if (inside) pointerX_ = pointer->x();
  swell(inside);
  if (inside && !row_.reduceMotion) {
    updateRow();
  } else if (before != hovered_) {
    updateItem(before);
    updateItem(hovered_);
  }
}

void DockView::swell(bool wanted) {
  // Fills answer at once; growing and shrinking again takes the length of a fade.
  if (wanted == swollen_ || row_.reduceMotion) return;
  swollen_ = wanted;
  swell_.setDirection(wanted ? QAbstractAnimation::Forward : QAbstractAnimation::Backward);
  if (swell_.state() == QAbstractAnimation::Stopped) swell_.start();
}

void DockView::mouseMoveEvent(QMouseEvent* event) { setPointer(event->position()); }

void DockView::leaveEvent(QEvent*) { setPointer(std::nullopt); }

void DockView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  setPointer(event->position());
  pressed_ = hovered_;
  updateItem(pressed_);
}

void DockView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  setPointer(event->position());
  const qsizetype pressed = std::exchange(pressed_, -1);
  updateItem(pressed);
  if (pressed >= 0 && pressed != hovered_) return;
  release(event->position());
}

void DockView::release(QPointF point) {
  for (qsizetype tab = 0; tab < layout_.tabs.size(); ++tab)
    if (layout_.tabs[tab].contains(point)) {
      Q_EMIT tabActivated(tab);
      return;
    }
  const auto item = layout_.itemAt(point);
  if (!item) {
    if (row_.widgets.isEmpty() && layout_.glass.contains(point)) Q_EMIT addWidgetsRequested();
    return;
  }
  if (const DockWidget* widget = widgetOf(*item)) {
    const QRectF& tile = layout_.items[*item].rect;
    const auto part =
        tilePartAt(tiles_.value(widget->id).content, tile.width() / row_.scale, (point - tile.topLeft()) / row_.scale);
    if (part) {
      Q_EMIT tilePartActivated(widget->id, *part);
      return;
    }
  }
  activateItem(*item);
}

void DockView::wheelEvent(QWheelEvent* event) {
  if (layout_.overflow <= 0) {
    event->ignore();
    return;
  }
  const QPointF pixels = event->pixelDelta().isNull() ? QPointF(event->angleDelta()) / 2 : QPointF(event->pixelDelta());
  const double by = std::abs(pixels.x()) > std::abs(pixels.y()) ? pixels.x() : pixels.y();
  const double scroll = std::clamp(scroll_ - by, 0.0, layout_.overflow);
  event->accept();
  if (scroll == scroll_) return;
  scroll_ = scroll;
  relayout();
  setPointer(event->position());
}

void DockView::openMenu(qsizetype item, const QPoint& position) {
  if (const DockWidget* widget = widgetOf(item))
    Q_EMIT contextMenuRequested(widget->id, position);
  else if (item >= 0)
    Q_EMIT applicationMenuRequested(row_.runningApps[layout_.items[item].index].id, position);
  else
    Q_EMIT contextMenuRequested(QUuid(), position);
}

void DockView::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Keyboard) {
    const QPointF place = focused_ >= 0 ? layout_.items[focused_].rect.center() : layout_.glass.center();
    openMenu(focused_, mapToGlobal(place).toPoint());
  } else if (layout_.glass.contains(event->pos())) {
    openMenu(layout_.itemAt(event->pos()).value_or(-1), event->globalPos());
  }
  event->accept();
}

void DockView::setFocused(qsizetype item) {
  updateItem(focused_);
  focused_ = item;
  updateItem(focused_);
  if (focused_ >= 0) {
    QAccessibleEvent told(this, QAccessible::Focus);
    told.setChild(static_cast<int>(focused_));
    QAccessible::updateAccessibility(&told);
  }
}

void DockView::moveFocus(int direction) {
  qsizetype item = focused_;
  do item += direction;
  while (item >= 0 && item < layout_.items.size() && !answersPointer(item));
  if (item >= 0 && item < layout_.items.size()) setFocused(item);
}

void DockView::keyPressEvent(QKeyEvent* event) {
  const bool leftToRight = layoutDirection() == Qt::LeftToRight;
  switch (event->key()) {
    case Qt::Key_Left:
      moveFocus(leftToRight ? -1 : 1);
      return;
    case Qt::Key_Right:
      moveFocus(leftToRight ? 1 : -1);
      return;
    case Qt::Key_Home:
      focused_ = -1;
      moveFocus(1);
      updateRow();
      return;
    case Qt::Key_End:
      focused_ = layout_.items.size();
      moveFocus(-1);
      updateRow();
      return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      if (row_.widgets.isEmpty() && layout_.items.isEmpty()) Q_EMIT addWidgetsRequested();
      activateItem(focused_);
      return;
    case Qt::Key_Escape:
      clearFocus();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

void DockView::focusInEvent(QFocusEvent*) {
  if (focused_ < 0) moveFocus(1);
  updateItem(focused_);
}

void DockView::focusOutEvent(QFocusEvent*) { updateItem(focused_); }

}  // namespace tarnwick
