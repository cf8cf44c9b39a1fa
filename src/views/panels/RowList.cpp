#include "views/panels/RowList.h"

#include <QApplication>
#include <algorithm>

namespace tarnwick {

namespace {

/// What of a row the keyboard can be on.
QWidget* focusableOf(QWidget& row) {
  const auto takesFocus = [](const QWidget* widget) {
    return widget->focusPolicy() != Qt::NoFocus && widget->isEnabled();
  };
  if (takesFocus(&row)) return &row;
  const QList<QWidget*> parts = row.findChildren<QWidget*>();
  const auto found = std::ranges::find_if(parts, takesFocus);
  return found == parts.end() ? nullptr : *found;
}

}  // namespace

RowList::RowList(QWidget* parent) : QWidget(parent), column_(new QVBoxLayout(this)) {
  column_->setContentsMargins(0, 0, 0, 0);
  column_->setSpacing(0);
}

void RowList::setRows(const QList<QWidget*>& rows) {
  const QWidget* focused = QApplication::focusWidget();
  const auto holds = [focused](const QWidget* row) {
    return focused && (row == focused || row->isAncestorOf(focused));
  };
  const auto place = std::ranges::find_if(rows_, holds) - rows_.begin();
  const bool hadFocus = place < rows_.size();
  for (QWidget* row : std::as_const(rows_)) {
    column_->removeWidget(row);
    row->hide();
    row->deleteLater();
  }
  rows_ = rows;
  for (QWidget* row : rows) {
    column_->addWidget(row);
    row->show();
  }
  if (!hadFocus || rows.isEmpty()) return;
  if (QWidget* next = focusableOf(*rows[std::min(place, rows.size() - 1)])) next->setFocus(Qt::OtherFocusReason);
}

}  // namespace tarnwick
