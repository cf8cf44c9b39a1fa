// The dock by the keyboard, and for screen readers.

#include <QAccessible>
#include <QKeyEvent>
#include <algorithm>
#include <utility>

#include "views/dock/DockView.h"
#include "views/theme/Theme.h"

namespace tarnwick {

void DockView::focusItem(qsizetype item) {
  if (!isItem(item)) return;
  updateItem(focused_);
  focused_ = item;
  scrollTo(item);
  updateItem(focused_);
  keysLead_ = hasFocus();
  updateTip();
  QAccessibleEvent accessibleEvent(this, QAccessible::Focus);
  accessibleEvent.setChild(static_cast<int>(focused_));
  QAccessible::updateAccessibility(&accessibleEvent);
}

/// Separators and spaces do nothing but have a menu, so that the keyboard comes by them too.
void DockView::moveFocus(int direction) { focusItem(focused_ + direction); }

void DockView::scrollTo(qsizetype item) {
  if (layout_.overflow <= 0) return;
  const double room = (theme::kInset + theme::kEndFade) * row_.scale;
  const QRectF& place = layout_.items[item].rect;
  const double beyondLeft = layout_.glass.left() + room - place.left();
  const double beyondRight = place.right() + room - layout_.glass.right();
  const int onwards = layout_.mirrored ? -1 : 1;
  if (beyondLeft > 0)
    scrollBy(-beyondLeft * onwards);
  else if (beyondRight > 0)
    scrollBy(beyondRight * onwards);
}

void DockView::keyPressEvent(QKeyEvent* event) {
  if (drag_.isActive()) {
    if (event->key() == Qt::Key_Escape) cancelDrag();
    return;
  }
  if (event->matches(QKeySequence::Undo)) {
    Q_EMIT undoRequested();
    return;
  }
  if (event->matches(QKeySequence::Redo)) {
    Q_EMIT redoRequested();
    return;
  }
  const int right = layout_.mirrored ? -1 : 1;
  switch (event->key()) {
    case Qt::Key_Left:
      moveFocus(-right);
      return;
    case Qt::Key_Right:
      moveFocus(right);
      return;
    case Qt::Key_Home:
    case Qt::Key_End: {
      const bool home = event->key() == Qt::Key_Home;
      updateItem(focused_);
      focused_ = home ? -1 : layout_.items.size();
      moveFocus(home ? 1 : -1);
      return;
    }
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      if (isEmpty() || (invites() && focused_ < 0)) Q_EMIT addWidgetsRequested();
      activateItem(focused_);
      return;
    case Qt::Key_F10:
    case Qt::Key_Menu:
      if (event->modifiers().testFlag(Qt::ControlModifier))
        openDockMenu();
      else if (event->key() == Qt::Key_F10 && !event->modifiers().testFlag(Qt::ShiftModifier))
        break;
      else
        openItemMenu(focused_);
      return;
    case Qt::Key_Escape:
      // Pressed so soon after the key that opened a panel, it is for the panel.
      if (!panelOpen_.isNull()) {
        Q_EMIT panelDismissed();
        return;
      }
      clearFocus();
      Q_EMIT focusLeft();
      return;
    default:
      break;
  }
  QWidget::keyPressEvent(event);
}

bool DockView::focusNextPrevChild(bool) {
  // The dock is one stop: arrows walk within it, Tab leaves it for the window that had the keyboard.
  clearFocus();
  Q_EMIT focusLeft();
  return true;
}

void DockView::focusInEvent(QFocusEvent*) {
  // The keyboard that a drag takes for Escape is nobody's focus.
  if (drag_.isActive()) return;
  if (focused_ < 0) moveFocus(1);
  updateItem(focused_);
  keysLead_ = true;
  updateTip();
}

void DockView::focusOutEvent(QFocusEvent*) {
  updateItem(focused_);
  keysLead_ = false;
  updateTip();
}

// --- For screen readers ---------------------------------------------------------------------------------------------

QList<ItemCommand> DockView::itemCommands(qsizetype item) const {
  if (!commands_) return {};
  if (item < 0) return commands_(QUuid(), 0, glassBeside(layout_.glass));
  if (!isItem(item)) return {};
  const DockWidget* widget = widgetOf(item);
  return commands_(widget ? widget->id : QUuid(), widget ? 0 : appOf(item)->id, glassBeside(layout_.items[item].rect));
}

/// A reader knows items by their place, and asks for a name once.
void DockView::reportNames() {
  QStringList names;
  for (qsizetype item = 0; item < layout_.items.size(); ++item) names << itemText(item).name;
  if (names == reportedNames_) return;
  const QStringList before = std::exchange(reportedNames_, names);
  if (!QAccessible::isActive()) return;
  if (names.size() != before.size()) {
    QAccessibleEvent accessibleEvent(this, QAccessible::ObjectReorder);
    QAccessible::updateAccessibility(&accessibleEvent);
  }
  for (qsizetype item = 0; item < std::min(names.size(), before.size()); ++item) {
    if (names[item] == before[item]) continue;
    QAccessibleEvent accessibleEvent(this, QAccessible::NameChanged);
    accessibleEvent.setChild(static_cast<int>(item));
    QAccessible::updateAccessibility(&accessibleEvent);
  }
}

}  // namespace tarnwick
