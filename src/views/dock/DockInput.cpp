// What the toolkit tells a dock: the pointer, the keyboard, and things that are held over it.

#include <QContextMenuEvent>
#include <QCursor>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cstdlib>

#include "views/dock/DockView.h"
#include "views/theme/Typography.h"

namespace tarnwick {

bool DockView::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::ApplicationFontChange:
    case QEvent::FontChange:
      Typography::reload();
      items_.forgetAll();
      relayout();
      break;
    case QEvent::StyleChange:  // With it, the theme of the icons may have changed.
      forgetIcons();
      break;
    case QEvent::Enter:  // The dock may come to a pointer that rests.
      if (!drag_.isActive()) setPointer(static_cast<QEnterEvent*>(event)->position());
      break;
    case QEvent::UngrabMouse:  // The window system took the pointer away, so its button will not come up here.
      cancelDrag();
      break;
    case QEvent::LayoutDirectionChange:
      items_.forgetAll();
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

void DockView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter_.paint(painter, event->region());
}

void DockView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  relayout();
}

void DockView::hideEvent(QHideEvent* event) {
  cancelDrag();
  drop_.letGo();
  setPointer(std::nullopt);
  tips_.leave();
  QWidget::hideEvent(event);
  press_.abandon();
  items_.followLoading();
}

void DockView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  items_.followLoading();
}

// --- Hover ----------------------------------------------------------------------------------------------------------

void DockView::setPointer(std::optional<QPointF> pointer) {
  if (tiles_.invites()) update();
  if (pointer && pointer != hover_.pointer()) focus_.setLeads(false);
  const auto arrow = [this] { return hover_.pointer() ? tiles_.layout().arrowAt(*hover_.pointer()) : 0; };
  const int arrowBefore = arrow();
  hover_.move(pointer, !drag_.isActive() && !drop_.isActive());
  if (arrow() != arrowBefore) update();
  hoverTabs();
  updateTip();
}

/// The row may have changed under a pointer that stands still.
void DockView::rehover() {
  if (hover_.pointer()) setPointer(hover_.pointer());
  press_.follow();
}

/// What is above the glass should not see it grow or shrink.
void DockView::hoverTabs() { tabs_.hover(hover_.isInside(), menuOpen_ || !panelOpen_.isNull()); }

void DockView::showTabs(bool shown) {
  if (tabs_.show(shown, isVisible())) relayout();
}

void DockView::setPanelOpen(const QUuid& widget) {
  if (widget == panelOpen_) return;
  panelOpen_ = widget;
  hoverTabs();
  updateTip();
  updateRow();
}

void DockView::setOpenMenu(QMenu* menu) {
  const bool open = menu != nullptr;
  menuOpen_ = open;
  menu_ = menu;
  // While it was open the pointer was the menu's, and nobody tells where that left it.
  const QPointF pointer = mapFromGlobal(QCursor::pos());
  if (!open && !drag_.isActive()) setPointer(glassRect().contains(pointer) ? std::optional(pointer) : std::nullopt);
  hoverTabs();
  updateTip();
}

QMenu* DockView::openMenu() const { return menu_; }

void DockView::leaveEvent(QEvent*) {
  if (!drag_.isActive()) setPointer(std::nullopt);
}

// --- Buttons --------------------------------------------------------------------------------------------------------

void DockView::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) press_.beginMiddle(event->position());
  // A button goes down that is down already, or while none is: it came up where nobody told.
  if (event->button() == Qt::LeftButton || !event->buttons().testFlag(Qt::LeftButton)) cancelDrag();
  if (event->button() != Qt::LeftButton) return;
  setPointer(event->position());
  if (!hover_.isInside()) return;
  press_.begin(*event, hover_.item());
  updateTip();
  if (tiles_.invites()) update();
}

void DockView::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(Qt::LeftButton)) cancelDrag();
  if (!press_.move(*event)) setPointer(event->position());
}

void DockView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) press_.end(*event);
  if (event->button() != Qt::MiddleButton) return;
  const auto item = press_.endMiddle(event->position());
  if (!item || !tiles_.isApplication(*item)) return;
  const DockWidget* widget = tiles_.widgetOf(*item);
  Q_EMIT newWindowRequested(widget ? widget->id : QUuid(), tiles_.applicationOf(*item));
}

void DockView::click(QPointF point) {
  const RowLayout& layout = tiles_.layout();
  if (const auto tab = layout.tabAt(point)) {
    Q_EMIT tabActivated(*tab);
    return;
  }
  const auto item = layout.itemAt(point);
  if (!item) {
    if (tiles_.invites() && layout.glass.contains(point)) Q_EMIT addWidgetsRequested();
    return;
  }
  if (const TileContent* content = tiles_.contentOf(*item)) {
    if (const auto part = content->partAt(tiles_.clickAt(*item, point))) {
      Q_EMIT tilePartActivated(tiles_.widgetOf(*item)->id, *part);
      return;
    }
  }
  activateItem(*item);
}

// --- Wheel ----------------------------------------------------------------------------------------------------------

void DockView::wheelEvent(QWheelEvent* event) {
  event->accept();
  if (drag_.isActive() || tabs_.turn(*event) || cycleWindows(*event)) return;
  if (scroll_.turn(*event))
    setPointer(event->position());
  else
    event->ignore();
}

bool DockView::cycleWindows(const QWheelEvent& event) {
  const QPoint turned = event.angleDelta();
  const bool sideways = std::abs(turned.x()) > std::abs(turned.y()) || event.modifiers().testFlag(Qt::ShiftModifier);
  const qsizetype item = tiles_.layout().itemAt(event.position()).value_or(-1);
  const quint64 application = tiles_.applicationOf(item);
  if (sideways || application == 0) {
    wheel_.reset();
    return false;
  }
  const int steps = wheel_.steps(item, turned.y());
  for (int step = 0; step < std::abs(steps); ++step) Q_EMIT cycleWindowsRequested(application, steps > 0 ? -1 : 1);
  return true;
}

// --- Menus ----------------------------------------------------------------------------------------------------------

void DockView::openMenu(qsizetype item, const QRect& beside) {
  if (const DockWidget* widget = tiles_.widgetOf(item))
    Q_EMIT contextMenuRequested(widget->id, beside);
  else if (const DockApp* app = tiles_.appOf(item))
    Q_EMIT applicationMenuRequested(app->id, beside);
  else
    Q_EMIT contextMenuRequested(QUuid(), beside);
}

void DockView::openItemMenu(qsizetype item) {
  openMenu(item, shape_.beside(tiles_.isItem(item) ? tiles_.place(item) : glassRect()));
}

void DockView::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  if (drag_.isActive()) return;
  if (event->reason() == QContextMenuEvent::Keyboard) {
    openItemMenu(focus_.item());
  } else {
    openMenuAt(event->pos());
  }
}

void DockView::openMenuAt(QPoint point) {
  if (!glassRect().contains(point)) return;
  const auto item = tiles_.layout().itemAt(point);
  item ? openItemMenu(*item) : openMenu(-1, shape_.beside(QRect(point, QSize(1, 1))));
}

// --- Keyboard -------------------------------------------------------------------------------------------------------

/// Separators and spaces do nothing but have a menu, so that the keyboard comes by them too.
void DockView::focusItem(qsizetype item) {
  if (!tiles_.isItem(item)) return;
  focus_.moveTo(item);
  scroll_.reveal(item);
  focus_.setLeads(hasFocus());
  updateTip();
  SpokenNames::tellFocus(*this, item);
}

void DockView::keyPressEvent(QKeyEvent* event) {
  if (drag_.isActive()) {
    if (event->key() == Qt::Key_Escape) cancelDrag();
    return;
  }
  const qsizetype item = focus_.item();
  switch (dockKeyOf(*event, tiles_.layout().mirrored)) {
    case DockKey::None:
      return QWidget::keyPressEvent(event);
    case DockKey::Undo:
      Q_EMIT undoRequested();
      return;
    case DockKey::Redo:
      Q_EMIT redoRequested();
      return;
    case DockKey::Back:
      return focusItem(item - 1);
    case DockKey::Onwards:
      return focusItem(item + 1);
    case DockKey::First:
      return focusItem(0);
    case DockKey::Last:
      return focusItem(tiles_.count() - 1);
    case DockKey::Activate:
      if (tiles_.isEmpty() || (tiles_.invites() && item < 0)) Q_EMIT addWidgetsRequested();
      return activateItem(item);
    case DockKey::ItemMenu:
      return openItemMenu(item);
    case DockKey::DockMenu:
      return openDockMenu();
    case DockKey::Leave:
      // Pressed so soon after the key that opened a panel, it is for the panel.
      if (!panelOpen_.isNull()) {
        Q_EMIT panelDismissed();
        return;
      }
      return leaveKeyboard();
  }
}

void DockView::leaveKeyboard() {
  clearFocus();
  Q_EMIT focusLeft();
}

bool DockView::focusNextPrevChild(bool) {
  // The dock is one stop: arrows walk within it, Tab leaves it for the window that had the keyboard.
  leaveKeyboard();
  return true;
}

void DockView::focusInEvent(QFocusEvent*) {
  // The keyboard that a drag takes for Escape is nobody's focus.
  if (drag_.isActive()) return;
  if (focus_.item() < 0) focusItem(0);
  updateItem(focus_.item());
  focus_.setLeads(true);
  updateTip();
}

void DockView::focusOutEvent(QFocusEvent*) {
  updateItem(focus_.item());
  focus_.setLeads(false);
  updateTip();
}

// --- Things from elsewhere ------------------------------------------------------------------------------------------

void DockView::dragEnterEvent(QDragEnterEvent* event) {
  if (drop_.hold(*event)) Q_EMIT dragStarted();
}

void DockView::dragMoveEvent(QDragMoveEvent* event) {
  if (drop_.hold(*event)) Q_EMIT dragMoved();
}

void DockView::dragLeaveEvent(QDragLeaveEvent*) { drop_.letGo(); }

void DockView::dropEvent(QDropEvent* event) { drop_.drop(*event); }

}  // namespace tarnwick
