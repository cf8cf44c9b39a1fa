// What pointer and keyboard do with the cards of the library.

#include <QAccessible>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>

#include "config/WidgetTransfer.h"
#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/controls/DragSource.h"
#include "views/library/LibraryView.h"
#include "views/theme/DesktopLook.h"
#include "widgets/LibraryWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kButtonHeight = 26;

}  // namespace

int LibraryView::activeRow() const { return hovered_ >= 0 ? hovered_ : currentIndex().row(); }

void LibraryView::updateCard(int row) {
  if (row >= 0) viewport()->update(cardRect(row).united(markRect(row)));
}

void LibraryView::setHovered(int row) {
  if (!viewport()->underMouse() && !add_->underMouse()) row = -1;
  if (row == hovered_) return;
  updateCard(hovered_);
  hovered_ = row;
  updateCard(hovered_);
  placeButton();
}

QRect LibraryView::buttonRect(int row) const {
  const QRect card = cardRect(row);
  const int width = add_->sizeHint().width();
  const int top = card.bottom() + 1 - CardLayout::kNameRow + (CardLayout::kNameRow - kButtonHeight) / 2;
  const int left =
      isRightToLeft() ? card.left() + CardLayout::kPadding : card.right() + 1 - CardLayout::kPadding - width;
  return {left, top, width, kButtonHeight};
}

void LibraryView::placeButton() {
  const int row = activeRow();
  const LibraryItem* item = itemOf(model()->index(row, 0));
  if (!item) {
    add_->hide();
    return;
  }
  add_->setLabel(buttonWord(*item));
  add_->setAccessibleName(item->entry.picker ? item->title() : LibraryWords::tr("Add %1").arg(item->title()));
  const QRect place = buttonRect(row);
  add_->setFixedSize(place.size());
  add_->move(mapToParent(viewport()->mapToParent(place.topLeft())));
  add_->setVisible(viewport()->rect().contains(place));
}

void LibraryView::activate(int row) {
  if (const LibraryItem* item = itemOf(model()->index(row, 0))) {
    const LibraryItem wanted = *item;
    choose(row);
    Q_EMIT itemActivated(wanted);
  }
}

void LibraryView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QAbstractItemView::currentChanged(current, previous);
  updateCard(previous.row());
  updateCard(current.row());
  placeButton();
  if (!current.isValid() || !QAccessible::isActive()) return;
  QAccessibleEvent focusEvent(this, QAccessible::Focus);
  focusEvent.setChild(current.row());
  QAccessible::updateAccessibility(&focusEvent);
}

void LibraryView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QAbstractItemView::selectionChanged(selected, deselected);
  const QModelIndexList chosen = selected.indexes();
  if (!chosen.isEmpty() && chosen.first() != currentIndex()) setCurrentIndex(chosen.first());
}

void LibraryView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) activate(indexAt(event->position().toPoint()).row());
}

void LibraryView::keyPressEvent(QKeyEvent* event) {
  const bool enters = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enters) {
    activate(currentIndex().row());
  } else if (field_ && !event->text().trimmed().isEmpty() && event->text().at(0).isPrint() &&
             !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
    // What is typed is looked for.
    field_->setFocus(Qt::OtherFocusReason);
    QCoreApplication::sendEvent(field_, event);
  } else {
    QAbstractItemView::keyPressEvent(event);
  }
}

void LibraryView::followField(QLineEdit& field) {
  field_ = &field;
  field.installEventFilter(this);
}

bool LibraryView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == add_) {
    if (event->type() == QEvent::Wheel) {
      QCoreApplication::sendEvent(verticalScrollBar(), event);
      return true;
    }
    if (event->type() == QEvent::Leave) setHovered(indexAt(viewport()->mapFromGlobal(QCursor::pos())).row());
    return false;
  }
  if (watched != field_ || event->type() != QEvent::KeyPress) return QAbstractItemView::eventFilter(watched, event);
  auto& key = static_cast<QKeyEvent&>(*event);
  switch (key.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      QAbstractItemView::keyPressEvent(&key);
      return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
      if (!field_->text().isEmpty() || !currentIndex().isValid()) return false;
      QAbstractItemView::keyPressEvent(&key);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      activate(currentIndex().row());
      return true;
    default:
      return false;
  }
}

void LibraryView::startDrag(Qt::DropActions) {
  const LibraryItem* item = itemOf(currentIndex());
  if (!item || !item->entry.widget) return;
  const auto carried = LibraryShelves::freshWidget(*item);
  auto* mime = new QMimeData;
  mime->setText(WidgetTransfer::encode(*carried));
  QDrag* drag = makeDrag();
  drag->setMimeData(mime);
  const DockConfiguration& config = store_.config();
  const Palette palette = Palette::make(shownStyle(config), Backdrop::Plain, config.monochrome);
  const QPixmap picture = tiles_.dragPicture(*item->entry.widget, palette, devicePixelRatioF());
  drag->setPixmap(picture);
  drag->setHotSpot(QRectF(QPointF(), picture.deviceIndependentSize()).center().toPoint());
  carried_ = carried->id;
  drag_ = drag;
  // No event will say that the pointer leaves, or where it is when the drag is over.
  connect(drag, &QObject::destroyed, this, [this] { setHovered(-1); });
  beginDrag(drag, Qt::CopyAction, Qt::CopyAction);
  setHovered(-1);
}

bool LibraryView::viewportEvent(QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseMove:
    case QEvent::HoverMove:
    case QEvent::Enter:
      setHovered(drag_ ? -1 : indexAt(viewport()->mapFromGlobal(QCursor::pos())).row());
      break;
    case QEvent::Leave:
      setHovered(add_->underMouse() ? hovered_ : -1);
      break;
    default:
      break;
  }
  return QAbstractItemView::viewportEvent(event);
}

}  // namespace tarnwick
