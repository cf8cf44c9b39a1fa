#include "views/settings/OrderList.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>

#include "base/ForeignText.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Fields.h"
#include "views/controls/PaintedList.h"
#include "views/controls/PanelTip.h"
#include "views/theme/Glass.h"
#include "views/window/WindowTheme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kMostRows = 9;
constexpr int kSymbol = 18;
constexpr int kAction = 28;
constexpr int kActionSymbol = 15;
constexpr double kFaint = 0.55;
constexpr int kEdgeFade = 28;
constexpr double kTitleShare = 0.34;
constexpr double kCaptionShare = 0.68;
constexpr int kNoteRow = 62;  ///< The height of a row with space for a note.
constexpr double kNoteTitleShare = 0.23;

}  // namespace

class OrderList::Model final : public ItemModel<OrderItem> {
 public:
  explicit Model(OrderList& list) : ItemModel(&list), list_(list) {}

  bool renamable = false;

  QVariant data(const QModelIndex& index, int role) const override {
    const OrderItem* item = at(index);
    if (!item) return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::AccessibleTextRole) return item->title;
    if (role == Qt::AccessibleDescriptionRole) return list_.spoken(*item);
    return {};
  }
  bool setData(const QModelIndex& index, const QVariant& value, int role) override {
    if (role != Qt::EditRole || !index.isValid()) return false;
    const QString title = value.toString();
    if (!title.trimmed().isEmpty() && title != items[index.row()].title)
      later([id = items[index.row()].id, title](OrderList& list) { Q_EMIT list.renamed(id, title); });
    return true;
  }
  Qt::ItemFlags flags(const QModelIndex& index) const override {
    if (!index.isValid()) return Qt::ItemIsDropEnabled;
    Qt::ItemFlags flags = ItemModel::flags(index) | Qt::ItemIsDragEnabled;
    if (renamable) flags |= Qt::ItemIsEditable;
    return flags;
  }
  Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
  bool dropMimeData(const QMimeData*, Qt::DropAction, int, int, const QModelIndex&) override { return false; }
  /// The view asks for this when a row is dropped. The order is the store's, which reports the new one.
  bool moveRows(const QModelIndex&, int from, int count, const QModelIndex&, int before) override {
    if (count != 1 || from < 0 || from >= items.size()) return false;
    const int to = before > from ? before - 1 : before;
    if (to == from) return false;
    later([id = items[from].id, to](OrderList& list) { Q_EMIT list.moved(id, to); });
    return true;
  }

 private:
  /// The view is in the middle of something that a new list would disturb.
  void later(std::function<void(OrderList&)> tell) {
    QMetaObject::invokeMethod(
        &list_, [&list = list_, tell = std::move(tell)] { tell(list); }, Qt::QueuedConnection);
  }

  OrderList& list_;
};

class OrderList::Painter final : public QStyledItemDelegate {
 public:
  explicit Painter(OrderList& list) : QStyledItemDelegate(&list), list_(list) {}

  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
    return {list_.viewport()->width(), list_.rowHeight()};
  }
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const override {
    return new TextField(tr("Name"), parent);
  }
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex&) const override {
    const int left = theme::kCardPadding + kSymbol;
    const int y = option.rect.center().y() + 1 - editor->height() / 2;
    editor->setGeometry(QStyle::visualRect(
        list_.layoutDirection(), option.rect,
        QRect(option.rect.left() + left, y, option.rect.width() - left - theme::kCardPadding, editor->height())));
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const ControlLook& look = lookOf(list_);
    const OrderItem& item = list_.model_->items[index.row()];
    const QRect row = option.rect;
    if (index.row() > 0)
      painter->fillRect(QRectF(row.left() + theme::kCardPadding, row.top(), row.width() - theme::kCardPadding * 2,
                               hairline(*painter)),
                        look.palette.hairline);
    const QRectF ground = QRectF(row).adjusted(theme::kCardPadding / 2.0, 2, -theme::kCardPadding / 2.0, -2);
    const bool chosen = index == list_.currentIndex();
    if (chosen && list_.hasFocus())
      drawRounded(*painter, ground, theme::kRowCorner, look.palette.selection);
    else if (chosen || option.state.testFlag(QStyle::State_MouseOver))
      drawRounded(*painter, ground, theme::kRowCorner, look.palette.tile);
    if (item.isFaint && !look.palette.highContrast) painter->setOpacity(kFaint);
    paintWords(*painter, row, item, index, look);
    painter->setOpacity(1);
    if (list_.hasActions(index)) paintActions(*painter, index, look);
    painter->restore();
  }

 private:
  void paintWords(QPainter& painter, const QRect& row, const OrderItem& item, const QModelIndex& index,
                  const ControlLook& look) const {
    const bool mirrored = list_.isRightToLeft();
    const Qt::Alignment start = mirrored ? Qt::AlignRight : Qt::AlignLeft;
    const auto place = [&](int x, int width, double share) {
      const QRect box(row.left() + x, row.top(), std::max(0, width), row.height());
      const QRectF seen = QStyle::visualRect(list_.layoutDirection(), row, box);
      return QRectF(seen.left(), row.top() + row.height() * share - 10, seen.width(), 20);
    };
    int left = theme::kCardPadding;
    if (!item.symbol.isEmpty() || list_.picture_) {
      QRectF box(0, 0, kSymbol, kSymbol);
      box.moveCenter(place(left, kSymbol, 0.5).center());
      if (list_.picture_)
        list_.picture_(painter, box, item);
      else
        drawControlSymbol(painter, item.symbol, box, look.palette.secondary);
      left += kSymbol + theme::kRowGap;
    }
    if (list_.isPersistentEditorOpen(index)) return;  // Its field takes the place of the words.
    int right = row.width() - theme::kCardPadding;
    if (list_.hasActions(index)) {
      right -= static_cast<int>(list_.actions_.size()) * kAction;
    }
    if (!list_.showsActions(index) && !item.value.isEmpty()) {
      const int width = static_cast<int>(std::ceil(TextLine(item.value, TextStyle::Caption).width()));
      drawTextIn(painter, place(right - width, width, 0.5), item.value, TextStyle::Caption,
                 look.palette.accentWord(look.accent), mirrored ? Qt::AlignLeft : Qt::AlignRight);
      right -= width + theme::kRowGap;
    }
    const bool two = !item.caption.isEmpty();
    const bool three = list_.hasNotes_ && !item.note.isEmpty();
    const double title = three ? kNoteTitleShare : two ? kTitleShare : 0.5;
    drawTextIn(painter, place(left, right - left, title), item.title, TextStyle::Body, look.palette.primary, start,
               Elide::Middle);
    const auto caption = [&](const QString& text, double share) {
      drawTextIn(painter, place(left, right - left, share), text, TextStyle::Caption, look.palette.secondary, start);
    };
    if (two) caption(item.caption, three ? 0.5 : kCaptionShare);
    if (three) caption(item.note, 1 - kNoteTitleShare);
  }

  void paintActions(QPainter& painter, const QModelIndex& index, const ControlLook& look) const {
    const QPoint pointer = list_.viewport()->mapFromGlobal(QCursor::pos());
    const QColor& color = list_.showsActions(index) ? look.palette.primary : look.palette.secondary;
    for (qsizetype i = 0; i < list_.actions_.size(); ++i) {
      const QRectF box = list_.actionRect(index, i);
      if (box.contains(pointer) && list_.viewport()->underMouse())
        drawRounded(painter, box.adjusted(1, 1, -1, -1), theme::kSegmentCorner, look.palette.buttonHover);
      QRectF mark(0, 0, kActionSymbol, kActionSymbol);
      mark.moveCenter(box.center());
      drawControlSymbol(painter, list_.actions_[i].symbol, mark, color);
    }
  }

  OrderList& list_;
};

OrderList::OrderList(const QString& label, QWidget* parent) : QListView(parent), model_(new Model(*this)) {
  becomePaintedList(*this, label);
  setModel(model_);
  setItemDelegate(new Painter(*this));
  setDragDropMode(QAbstractItemView::InternalMove);
  setDefaultDropAction(Qt::MoveAction);
  setUniformItemSizes(true);
  setTabKeyNavigation(false);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  // What was painted is moved as it is, and the fade would go along.
  connect(verticalScrollBar(), &QScrollBar::valueChanged, viewport(), qOverload<>(&QWidget::update));
}

OrderList::~OrderList() = default;

void OrderList::setActions(const QList<OrderAction>& actions) {
  actions_ = actions;
  QStringList keys;
  for (const OrderAction& action : actions)
    if (!action.key.isEmpty()) keys << action.label + u' ' + action.key.toString(QKeySequence::NativeText);
  if (dragDropMode() != NoDragDrop)
    keys << tr("Move %1").arg(QKeySequence(Qt::ALT | Qt::Key_Up).toString(QKeySequence::NativeText));
  setAccessibleDescription(keys.join(u", "_s));
}

void OrderList::setItems(const QList<OrderItem>& items) {
  if (items == model_->items) return;
  const QString before = chosen();
  const int row = currentIndex().row();
  const int scrolledTo = verticalScrollBar()->value();
  isQuiet_ = true;
  model_->set(items);
  const int again = model_->rowOf(before);
  setCurrentIndex(model_->index(again >= 0 ? again : std::min(row, model_->rowCount() - 1)));
  isQuiet_ = false;
  if (chosen() != before) Q_EMIT chosenChanged(chosen());
  setFixedHeight(sizeHint().height());
  updateGeometry();
  verticalScrollBar()->setValue(scrolledTo);
}

const QList<OrderItem>& OrderList::items() const { return model_->items; }

QString OrderList::idAt(const QModelIndex& index) const {
  return index.isValid() ? model_->items.value(index.row()).id : QString();
}

QString OrderList::chosen() const { return idAt(currentIndex()); }

void OrderList::choose(const QString& id) { setCurrentIndex(model_->index(model_->rowOf(id))); }

void OrderList::setRenamable(bool renamable) { model_->renamable = renamable; }

void OrderList::rename(const QString& id) {
  const QModelIndex index = model_->index(model_->rowOf(id));
  if (!index.isValid() || !model_->renamable || state() == EditingState) return;
  setCurrentIndex(index);
  edit(index);
}

QSize OrderList::sizeHint() const {
  const int rows = std::clamp(model_->rowCount(), 1, kMostRows);
  // Half a row says that more follow.
  const int half = model_->rowCount() > kMostRows ? rowHeight() / 2 : 0;
  return {200, rows * rowHeight() + half};
}

int OrderList::rowHeight() const { return hasNotes_ ? kNoteRow : theme::kTallRowHeight; }

/// All that a row says behind its title.
QString OrderList::spoken(const OrderItem& item) const {
  QStringList said{item.caption, item.value};
  if (hasNotes_) said << item.note;
  said.removeAll(QString());
  return said.join(u", "_s);
}

void OrderList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QListView::currentChanged(current, previous);
  viewport()->update();
  if (!isQuiet_) Q_EMIT chosenChanged(chosen());
}

// --- Pointer and keys -----------------------------------------------------------------------------------------------

/// Whether there are buttons in a row now: a person must see that something can be done to it.
bool OrderList::hasActions(const QModelIndex& index) const { return actions_.size() == 1 || showsActions(index); }

/// Whether the row is the one that is dealt with.
bool OrderList::showsActions(const QModelIndex& index) const {
  if (actions_.isEmpty() || !index.isValid()) return false;
  const bool under =
      viewport()->underMouse() && indexAt(viewport()->mapFromGlobal(QCursor::pos())).row() == index.row();
  return under || (index == currentIndex() && hasFocus());
}

QRect OrderList::actionRect(const QModelIndex& index, qsizetype action) const {
  // The view remembers how wide the row once was.
  const QRect known = visualRect(index);
  const QRect row(0, known.top(), viewport()->width(), known.height());
  const int fromEnd = static_cast<int>(actions_.size() - action) * kAction + theme::kCardPadding - theme::kRowGap / 2;
  const QRect box(row.right() + 1 - fromEnd, row.top() + (row.height() - kAction) / 2, kAction, kAction);
  return QStyle::visualRect(layoutDirection(), row, box);
}

qsizetype OrderList::actionAt(const QPoint& position) const {
  const QModelIndex index = indexAt(position);
  if (!index.isValid()) return -1;
  for (qsizetype i = 0; i < actions_.size(); ++i)
    if (actionRect(index, i).contains(position)) return i;
  return -1;
}

void OrderList::mousePressEvent(QMouseEvent* event) {
  pressed_ = event->button() == Qt::LeftButton ? actionAt(event->position().toPoint()) : -1;
  if (pressed_ < 0) {
    QListView::mousePressEvent(event);
    return;
  }
  setCurrentIndex(indexAt(event->position().toPoint()));
  event->accept();
}

void OrderList::mouseReleaseEvent(QMouseEvent* event) {
  const qsizetype pressed = std::exchange(pressed_, -1);
  if (pressed < 0) {
    QListView::mouseReleaseEvent(event);
    return;
  }
  const QPoint at = event->position().toPoint();
  if (actionAt(at) == pressed) Q_EMIT actionRequested(idAt(indexAt(at)), actions_[pressed].id);
}

void OrderList::mouseDoubleClickEvent(QMouseEvent* event) {
  const QPoint place = event->position().toPoint();
  const QString id = actionAt(place) < 0 ? idAt(indexAt(place)) : QString();
  QListView::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton && !id.isEmpty()) Q_EMIT opened(id);
}

void OrderList::pressItem(const QModelIndex& index) {
  setCurrentIndex(index);
  Q_EMIT opened(idAt(index));
}

QStringList OrderList::itemActions(const QModelIndex&) const {
  QStringList labels;
  for (const OrderAction& action : actions_) labels << action.label;
  return dragDropMode() == NoDragDrop ? labels : labels << tr("Move Up") << tr("Move Down");
}

void OrderList::runItemAction(const QModelIndex& index, qsizetype action) {
  setCurrentIndex(index);
  if (action < actions_.size()) return Q_EMIT actionRequested(idAt(index), actions_[action].id);
  moveCurrent(action == actions_.size() ? -1 : 1);
}

void OrderList::moveCurrent(int places) {
  const int to = currentIndex().row() + places;
  if (!currentIndex().isValid() || to < 0 || to >= model_->rowCount()) return;
  Q_EMIT moved(chosen(), to);
}

void OrderList::focusInEvent(QFocusEvent* event) {
  // The keyboard focus is on something visible.
  if (isKeyboardReason(event->reason()) && !currentIndex().isValid()) setCurrentIndex(model_->index(0));
  QListView::focusInEvent(event);
  viewport()->update();
}

// While a row is held, events go on: a window that is closed meanwhile goes once the row has been let go of.
void OrderList::startDrag(Qt::DropActions actions) {
  QWidget* top = window();
  const bool goes = top->testAttribute(Qt::WA_DeleteOnClose);
  top->setAttribute(Qt::WA_DeleteOnClose, false);
  QListView::startDrag(actions);
  top->setAttribute(Qt::WA_DeleteOnClose, goes);
  if (goes && !top->isVisible()) top->deleteLater();
}

void OrderList::keyPressEvent(QKeyEvent* event) {
  const QKeySequence pressed(event->keyCombination());
  const auto action = std::ranges::find_if(
      actions_, [&](const OrderAction& each) { return !each.key.isEmpty() && each.key == pressed; });
  if (event->keyCombination() == (Qt::ALT | Qt::Key_Up)) {
    moveCurrent(-1);
  } else if (event->keyCombination() == (Qt::ALT | Qt::Key_Down)) {
    moveCurrent(1);
  } else if (action != actions_.end() && currentIndex().isValid()) {
    Q_EMIT actionRequested(chosen(), action->id);
  } else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && state() != EditingState) {
    if (currentIndex().isValid()) Q_EMIT opened(chosen());
  } else {
    QListView::keyPressEvent(event);
  }
}

void OrderList::wheelEvent(QWheelEvent* event) {
  // A list that shows all of its rows leaves the wheel to the page.
  if (verticalScrollBar()->maximum() > 0)
    QListView::wheelEvent(event);
  else
    event->ignore();
}

void OrderList::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  const QScrollBar& bar = *verticalScrollBar();
  QPainter painter(viewport());
  const QColor ground = lookOf(*this).palette.panel.bodyTop;
  const auto fade = [&](int edge, int inwards) {
    QLinearGradient over(0, edge, 0, edge + inwards);
    over.setColorAt(0, ground);
    over.setColorAt(1, faded(ground, 0));
    painter.fillRect(QRect(0, std::min(edge, edge + inwards), viewport()->width(), std::abs(inwards)), over);
  };
  if (bar.value() > bar.minimum()) fade(0, kEdgeFade);
  if (bar.value() < bar.maximum()) fade(viewport()->height(), -kEdgeFade);
}

bool OrderList::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::MouseMove || event->type() == QEvent::Leave) viewport()->update();
  if (event->type() == QEvent::ToolTip) {
    const auto& help = static_cast<QHelpEvent&>(*event);
    const qsizetype action = actionAt(help.pos());
    const QModelIndex index = indexAt(help.pos());
    const OrderItem* item = model_->at(index);
    const QString note = item && hasNotes_ ? ForeignText::line(item->note) : QString();
    if (action >= 0) {
      PanelTip::show(*viewport(), actions_[action].label, actionRect(index, action));
    } else {
      PanelTip::show(*viewport(), note, visualRect(index));
    }
    return true;
  }
  return QListView::viewportEvent(event);
}

}  // namespace tarnwick
