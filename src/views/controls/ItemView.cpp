#include "views/controls/ItemView.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <algorithm>

#include "views/controls/ControlTheme.h"
#include "views/controls/DragSource.h"
#include "views/controls/ItemPainter.h"
#include "views/controls/PaintedList.h"
#include "views/controls/PanelTip.h"
#include "views/controls/PlainTip.h"
#include "views/theme/Glass.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kIconColumns = 4;
constexpr int kIconCell = 78;

bool isDragged(const ViewItem& item) { return !item.drag.isEmpty() || !item.dragText.isEmpty(); }

}  // namespace

class ItemView::Model final : public ItemModel<ViewItem> {
 public:
  using ItemModel::ItemModel;

  QVariant data(const QModelIndex& index, int role) const override {
    const ViewItem* item = at(index);
    if (!item) return {};
    switch (role) {
      case Qt::DisplayRole:
      case Qt::AccessibleTextRole:
        return item->title;
      case Qt::AccessibleDescriptionRole:
        return item->caption.isEmpty() ? item->value : item->caption;
      case Qt::ToolTipRole:
        return item->tip.isEmpty() ? plainTip(item->title) : plainTipOfLines(item->tip);
      default:
        return {};
    }
  }
  Qt::ItemFlags flags(const QModelIndex& index) const override {
    const ViewItem* item = at(index);
    return ItemModel::flags(index) | (item && isDragged(*item) ? Qt::ItemIsDragEnabled : Qt::NoItemFlags);
  }
};

ItemView::ItemView(const QString& label, Shape shape, QWidget* parent)
    : QListView(parent), shape_(shape), model_(new Model(this)) {
  becomePaintedList(*this, label);
  setModel(model_);
  setItemDelegate(new Painter(*this));
  setDragEnabled(true);
  setUniformItemSizes(true);
  setFocusPolicy(Qt::TabFocus);
  if (shape != Shape::Rows) {
    setFlow(QListView::LeftToRight);
    setWrapping(true);
    setResizeMode(QListView::Adjust);
  }
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  scrolled_.setSingleShot(true);
  scrolled_.setInterval(theme::kScrollStaysMilliseconds);
  connect(&scrolled_, &QTimer::timeout, viewport(), qOverload<>(&QWidget::update));
  connect(verticalScrollBar(), &QScrollBar::valueChanged, &scrolled_, qOverload<>(&QTimer::start));
  connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) { Q_EMIT opened(idAt(index)); });
  fitHeight();
}

ItemView::~ItemView() = default;

void ItemView::setPicture(Picture picture) {
  picture_ = std::move(picture);
  refreshPictures();
}

void ItemView::setItemAction(const QString& symbol, const QString& label, const QKeySequence& key) {
  actionSymbol_ = symbol;
  actionLabel_ = label;
  actionKey_ = key;
  setAccessibleDescription((label + u' ' + key.toString(QKeySequence::NativeText)).trimmed());
}

void ItemView::setMostRows(int rows) {
  mostRows_ = rows;
  fitHeight();
}

void ItemView::setPictureCell(int columns, int height) {
  pictureColumns_ = columns;
  pictureCell_ = height;
  fitHeight();
}

void ItemView::setItems(const QList<ViewItem>& items) {
  if (items == model_->items) return;
  const bool taller = !items.isEmpty() && (items.first().caption.isEmpty() != cellHasNoCaption_);
  const QString chosen = idAt(currentIndex());
  const int scrolledTo = verticalScrollBar()->value();
  if (!items.isEmpty()) cellHasNoCaption_ = items.first().caption.isEmpty();
  model_->set(items);
  if (taller) scheduleDelayedItemsLayout();
  const auto again = std::ranges::find(items, chosen, &ViewItem::id);
  if (again != items.end())
    setCurrentIndex(model_->index(static_cast<int>(again - items.begin())));
  else if (field_ && !field_->isHidden())
    choose(0);
  fitHeight();
  verticalScrollBar()->setValue(scrolledTo);
}

const QList<ViewItem>& ItemView::items() const { return model_->items; }

void ItemView::choose(int index) { setCurrentIndex(model_->index(index)); }

void ItemView::followField(QLineEdit& field) {
  field_ = &field;
  field.installEventFilter(this);
  connect(&field, &QLineEdit::textChanged, this, [this] { choose(0); });
  choose(0);
}

int ItemView::columns() const {
  return shape_ == Shape::Rows    ? 1
         : shape_ == Shape::Icons ? std::max(kIconColumns, width() / kIconCell)
                                  : pictureColumns_;
}

QSize ItemView::cell() const {
  // One pixel less than there is: a row that fills it to the last one is broken up.
  const int width = std::max(1, (viewport()->width() - 1) / columns());
  if (shape_ == Shape::Rows)
    return {viewport()->width(), cellHasNoCaption_ ? theme::kRowHeight : theme::kTallRowHeight};
  if (shape_ == Shape::Icons) return {width, kIconCell};
  return {width, pictureCell_};
}

QSize ItemView::sizeHint() const {
  const int count = model_->rowCount();
  const int rows = (count + columns() - 1) / columns();
  return {200, cell().height() * std::clamp(rows, 1, mostRows_)};
}

void ItemView::fitHeight() {
  if (const int wanted = sizeHint().height(); wanted != height() || minimumHeight() != wanted) setFixedHeight(wanted);
  updateGeometry();
}

void ItemView::resizeEvent(QResizeEvent* event) {
  if (shape_ != Shape::Rows) setGridSize(cell());
  QListView::resizeEvent(event);
  fitHeight();
}

QString ItemView::idAt(const QModelIndex& index) const {
  return index.isValid() && index.row() < model_->items.size() ? model_->items[index.row()].id : QString();
}

// --- Pointer and keys -----------------------------------------------------------------------------------------------

bool ItemView::showsAction(const QModelIndex& index) const {
  if (actionSymbol_.isEmpty() || !index.isValid()) return false;
  const QPoint pointer = viewport()->mapFromGlobal(QCursor::pos());
  const bool under = viewport()->underMouse() && indexAt(pointer) == index;
  return under || (index == currentIndex() && hasFocus() && byKeyboard_);
}

QString ItemView::actionLabelOf(const QModelIndex& index) const {
  const QString own = index.isValid() ? items().value(index.row()).action : QString();
  return own.isEmpty() ? actionLabel_ : own;
}

QRect ItemView::menuRect(const QModelIndex& index) const {
  const QRect box = visualRect(index);
  constexpr int size = static_cast<int>(Painter::kActionSize);
  const bool row = shape_ == Shape::Rows;
  const int inset = row ? theme::kRowOverhang : 4;
  const int x = isRightToLeft() && row ? box.left() + inset : box.right() + 1 - inset - size;
  return {x, row ? box.center().y() + 1 - size / 2 : box.top() + inset, size, size};
}

/// Beside the button for the menu, or in its place where there is none.
QRect ItemView::actionRect(const QModelIndex& index) const {
  const QRect last = menuRect(index);
  if (!hasMenuButton()) return last;
  const int step = last.width() + Painter::kActionGap;
  return last.translated(isRightToLeft() ? step : -step, 0);
}

ItemView::Side ItemView::sideAt(const QPoint& place) const {
  const QModelIndex index = indexAt(place);
  if (!index.isValid()) return Side::None;
  if (hasMenuButton() && menuRect(index).contains(place)) return Side::Menu;
  return !actionSymbol_.isEmpty() && actionRect(index).contains(place) ? Side::Action : Side::None;
}

void ItemView::mousePressEvent(QMouseEvent* event) {
  pressed_ = event->button() == Qt::LeftButton ? sideAt(event->position().toPoint()) : Side::None;
  if (pressed_ != Side::None)
    event->accept();
  else
    QListView::mousePressEvent(event);
}

void ItemView::mouseReleaseEvent(QMouseEvent* event) {
  const Side pressed = std::exchange(pressed_, Side::None);
  if (event->button() == Qt::MiddleButton) {
    if (const QModelIndex index = indexAt(event->position().toPoint()); index.isValid())
      Q_EMIT middleClicked(idAt(index));
    return;
  }
  if (pressed == Side::None) {
    QListView::mouseReleaseEvent(event);
    return;
  }
  const QPoint place = event->position().toPoint();
  if (sideAt(place) != pressed) return;
  const QModelIndex index = indexAt(place);
  if (pressed == Side::Action) {
    Q_EMIT actionRequested(idAt(index));
  } else {
    const QRect button = menuRect(index);
    openMenu(index, isRightToLeft() ? button.bottomRight() : button.bottomLeft());
  }
}

void ItemView::openMenu(const QModelIndex& index, const QPoint& at) {
  setCurrentIndex(index);
  PaneMenu::open(*viewport(), at, index.data(Qt::DisplayRole).toString(), menu_(idAt(index)));
}

void ItemView::pressItem(const QModelIndex& index) {
  setCurrentIndex(index);
  openCurrent();
}

QStringList ItemView::itemActions(const QModelIndex& index) const {
  QStringList actions;
  const QString own = actionLabelOf(index);
  if (!actionSymbol_.isEmpty()) actions << own;
  for (const PaneMenuEntry& entry : menuOf(index))
    if (entry.text != own) actions << entry.text;
  return actions;
}

void ItemView::runItemAction(const QModelIndex& index, qsizetype action) {
  const QString wanted = itemActions(index).value(action);
  const QList<PaneMenuEntry> entries = menuOf(index);
  const auto entry = std::ranges::find(entries, wanted, &PaneMenuEntry::text);
  if (entry != entries.end())
    entry->run();
  else
    Q_EMIT actionRequested(idAt(index));
}

/// What there is to choose from, without the lines between.
QList<PaneMenuEntry> ItemView::menuOf(const QModelIndex& index) const {
  QList<PaneMenuEntry> entries = menu_ && index.isValid() ? menu_(idAt(index)) : QList<PaneMenuEntry>();
  entries.removeIf([](const PaneMenuEntry& entry) { return entry.text.isEmpty() || !entry.run; });
  return entries;
}

void ItemView::contextMenuEvent(QContextMenuEvent* event) {
  const bool isKey = event->reason() == QContextMenuEvent::Keyboard;
  // That of a mouse comes by way of the viewport, in whose coordinates it is.
  const QModelIndex index = isKey ? currentIndex() : indexAt(event->pos());
  if (!menu_ || !index.isValid()) return QListView::contextMenuEvent(event);
  event->accept();
  openMenu(index, isKey ? visualRect(index).center() : event->pos());
}

void ItemView::openCurrent() {
  if (const QString id = idAt(currentIndex()); !id.isEmpty()) Q_EMIT opened(id);
}

/// Whether the event is a key that means something to every item.
bool ItemView::isKept(QKeyEvent& event) {
  const QKeySequence pressed(event.keyCombination());
  if (!actionKey_.isEmpty() && pressed == actionKey_) {
    if (const QString id = idAt(currentIndex()); !id.isEmpty()) Q_EMIT actionRequested(id);
    return true;
  }
  if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter) return false;
  openCurrent();
  return true;
}

void ItemView::focusInEvent(QFocusEvent* event) {
  byKeyboard_ = isKeyboardReason(event->reason());
  QListView::focusInEvent(event);
}

void ItemView::keyPressEvent(QKeyEvent* event) {
  byKeyboard_ = true;
  viewport()->update();
  if (isKept(*event))
    event->accept();
  else
    QListView::keyPressEvent(event);
}

bool ItemView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == field_ && event->type() == QEvent::ContextMenu) {
    // The key for a menu is about the item, unless what is selected in the field is nearer.
    auto& asked = static_cast<QContextMenuEvent&>(*event);
    if (asked.reason() != QContextMenuEvent::Keyboard || !menu_ || !currentIndex().isValid()) return false;
    if (field_->hasSelectedText()) return false;
    contextMenuEvent(&asked);
    return true;
  }
  if (watched != field_ || event->type() != QEvent::KeyPress) return QListView::eventFilter(watched, event);
  auto& key = static_cast<QKeyEvent&>(*event);
  switch (key.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      QListView::keyPressEvent(&key);
      return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
      if (shape_ == Shape::Rows || !field_->text().isEmpty()) return false;
      QListView::keyPressEvent(&key);
      return true;
    case Qt::Key_Delete:
      // There is nothing to delete in the field.
      return field_->text().isEmpty() && isKept(key);
    default:
      return isKept(key);
  }
}

std::unique_ptr<QMimeData> ItemView::carried(const ViewItem& item) {
  if (!isDragged(item)) return nullptr;
  auto content = std::make_unique<QMimeData>();
  if (!item.drag.isEmpty()) content->setUrls({item.drag});
  content->setText(item.dragText.isEmpty() ? item.drag.toString() : item.dragText);
  return content;
}

void ItemView::startDrag(Qt::DropActions) {
  const QModelIndex index = currentIndex();
  if (!index.isValid()) return;
  const ViewItem item = items()[index.row()];
  auto content = carried(item);
  if (!content) return;
  QDrag* drag = makeDrag();
  drag->setMimeData(content.release());
  if (picture_) {
    constexpr int side = static_cast<int>(Painter::kIconSize);
    QPixmap shown(QSize(side, side) * devicePixelRatio());
    shown.setDevicePixelRatio(devicePixelRatio());
    shown.fill(Qt::transparent);
    QPainter painter(&shown);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box(0, 0, side, side);
    if (dragGround_ >= 0) {
      QColor ground = lookOf(*this).palette.panel.bodyTop;
      ground.setAlpha(255);
      drawRounded(painter, box, dragGround_, ground);
    }
    picture_(painter, box, item);
    painter.end();
    drag->setPixmap(shown);
  }
  const Qt::DropActions beyondCopying = item.dragsCopy ? Qt::IgnoreAction : Qt::MoveAction | Qt::LinkAction;
  beginDrag(drag, Qt::CopyAction | beyondCopying, Qt::CopyAction);
}

bool ItemView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto& help = static_cast<QHelpEvent&>(*event);
    const Side side = sideAt(help.pos());
    if (side != Side::None) {
      const QModelIndex index = indexAt(help.pos());
      if (side == Side::Menu) {
        PanelTip::show(*viewport(), menuLabel_, menuRect(index));
      } else {
        PanelTip::show(*viewport(), actionLabelOf(index), actionRect(index));
      }
      return true;
    }
    return PanelTip::answer(*this, *event);
  }
  return QListView::viewportEvent(event);
}

void ItemView::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  const QScrollBar& bar = *verticalScrollBar();
  if (!scrolled_.isActive() || bar.maximum() <= bar.minimum()) return;
  const int span = bar.maximum() - bar.minimum() + bar.pageStep();
  const double length = std::max<double>(theme::kScrollThumbLeast, 1.0 * height() * bar.pageStep() / span);
  const double y = (height() - length) * bar.value() / std::max(1, bar.maximum());
  const double x = isRightToLeft() ? 0 : width() - theme::kScrollThumb;
  QPainter painter(viewport());
  painter.setRenderHint(QPainter::Antialiasing);
  drawRounded(painter, QRectF(x, y, theme::kScrollThumb, length), theme::kScrollThumb / 2.0,
              lookOf(*this).palette.tertiary);
}

}  // namespace tarnwick
