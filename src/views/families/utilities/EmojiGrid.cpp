#include "views/families/utilities/EmojiGrid.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollArea>
#include <QStyledItemDelegate>
#include <algorithm>
#include <cstdlib>

#include "commandbar/EmojiTable.h"
#include "views/controls/ControlLook.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/PaintedList.h"
#include "views/controls/PanelTip.h"
#include "views/theme/Emoji.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"

namespace tarnwick {

namespace {

constexpr double kGlyphSize = 22;

}  // namespace

class EmojiGrid::Model final : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  QStringList emoji;

  void set(const QStringList& wanted) {
    beginResetModel();
    emoji = wanted;
    endResetModel();
  }
  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(emoji.size());
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid() || index.row() >= emoji.size()) return {};
    const QString& shown = emoji[index.row()];
    switch (role) {
      case Qt::DisplayRole:
        return shown;
      case Qt::AccessibleTextRole:
      case Qt::ToolTipRole: {
        const EmojiTable& table = EmojiTable::shared();
        const qsizetype at = table.indexOf(shown);
        return at < 0 ? shown : table.name(at);
      }
      default:
        return {};
    }
  }
};

class EmojiGrid::Painter final : public QStyledItemDelegate {
 public:
  explicit Painter(EmojiGrid& grid) : QStyledItemDelegate(&grid), grid_(grid) {}

  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override { return grid_.gridSize(); }
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const ControlLook& look = lookOf(grid_);
    QRectF cell(0, 0, kCell, kCell);
    cell.moveCenter(QRectF(option.rect).center());
    if (option.state.testFlag(QStyle::State_MouseOver))
      drawRounded(*painter, cell, theme::kButtonCorner, look.palette.buttonHover);
    if (grid_.hasFocus() && grid_.byKeyboard_ && index == grid_.currentIndex())
      drawFocusLine(*painter, cell, theme::kButtonCorner, look);
    QRectF picture(0, 0, kGlyphSize, kGlyphSize);
    picture.moveCenter(cell.center());
    drawEmoji(*painter, index.data(Qt::DisplayRole).toString(), picture);
    painter->restore();
  }

 private:
  EmojiGrid& grid_;
};

EmojiGrid::EmojiGrid(const QString& name, QWidget* parent) : QListView(parent), model_(new Model(this)) {
  becomePaintedList(*this, name);
  setModel(model_);
  setItemDelegate(new Painter(*this));
  setFocusPolicy(Qt::TabFocus);
  setFlow(QListView::LeftToRight);
  setWrapping(true);
  setResizeMode(QListView::Adjust);
  setUniformItemSizes(true);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setFixedHeight(0);
  connect(this, &QAbstractItemView::clicked, this, &EmojiGrid::pressItem);
}

void EmojiGrid::setEmoji(const QStringList& emoji) {
  if (emoji == model_->emoji) return;
  model_->set(emoji);
  const int rows = (static_cast<int>(emoji.size()) + kColumns - 1) / kColumns;
  setFixedHeight(rows * kCell);
}

void EmojiGrid::resizeEvent(QResizeEvent* event) {
  // One pixel less than there is: a row that fills it to the last one is broken up.
  setGridSize({std::max(1, (viewport()->width() - 1) / kColumns), kCell});
  QListView::resizeEvent(event);
}

/// What is around it scrolls.
void EmojiGrid::wheelEvent(QWheelEvent* event) { event->ignore(); }

void EmojiGrid::pressItem(const QModelIndex& index) {
  const QString emoji = index.data(Qt::DisplayRole).toString();
  if (chosen && !emoji.isEmpty()) chosen(emoji);
}

void EmojiGrid::enter() {
  if (isEmpty()) return;
  reach(0);
  setFocus(Qt::TabFocusReason);
}

void EmojiGrid::reach(int row) {
  const QModelIndex index = model_->index(row);
  setCurrentIndex(index);
  const QRect cell = visualRect(index);
  for (QWidget* each = parentWidget(); each; each = each->parentWidget())
    if (auto* area = qobject_cast<QScrollArea*>(each)) {
      const QPoint center = viewport()->mapTo(area->widget(), cell.center());
      area->ensureVisible(center.x(), center.y(), 0, kCell / 2);
    }
  viewport()->update();
}

void EmojiGrid::focusInEvent(QFocusEvent* event) {
  byKeyboard_ = isKeyboardReason(event->reason());
  QListView::focusInEvent(event);
  if (!isEmpty()) reach(std::max(0, currentIndex().row()));
}

void EmojiGrid::moveBy(int step) {
  const int to = currentIndex().row() + step;
  if (to >= 0 && to < model_->rowCount()) return reach(to);
  const auto& left = to < 0 ? leftUp : leftDown;
  if (std::abs(step) == kColumns && left) left();
}

void EmojiGrid::keyPressEvent(QKeyEvent* event) {
  byKeyboard_ = true;
  const int forward = isRightToLeft() ? -1 : 1;
  switch (event->key()) {
    case Qt::Key_Left:
      return moveBy(-forward);
    case Qt::Key_Right:
      return moveBy(forward);
    case Qt::Key_Up:
      return moveBy(-kColumns);
    case Qt::Key_Down:
      return moveBy(kColumns);
    case Qt::Key_Home:
      return isEmpty() ? void() : reach(0);
    case Qt::Key_End:
      return isEmpty() ? void() : reach(model_->rowCount() - 1);
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return pressItem(currentIndex());
    default:
      event->ignore();
  }
}

bool EmojiGrid::viewportEvent(QEvent* event) {
  return PanelTip::answer(*this, *event) || QListView::viewportEvent(event);
}

}  // namespace tarnwick
