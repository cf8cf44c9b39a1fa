#include "views/window/SideList.h"

#include <QFocusEvent>
#include <QStyledItemDelegate>
#include <algorithm>

#include "views/controls/ControlLook.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/PaintedList.h"
#include "views/controls/PanelTip.h"
#include "views/theme/Glass.h"
#include "views/window/WindowTheme.h"

namespace tarnwick {

class SideList::Model final : public ItemModel<SideItem> {
 public:
  using ItemModel::ItemModel;

  QVariant data(const QModelIndex& index, int role) const override {
    const SideItem* item = at(index);
    if (!item) return {};
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole) return item->title;
    if (role == Qt::AccessibleDescriptionRole) return item->count;
    if (role == Qt::ToolTipRole && static_cast<const SideList*>(QObject::parent())->showsSymbolsOnly())
      return item->title;
    return {};
  }
};

class SideList::Painter final : public QStyledItemDelegate {
 public:
  Painter(SideList& list, int rowHeight) : QStyledItemDelegate(&list), list_(list), rowHeight_(rowHeight) {}

  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const override {
    const int above = list_.model_->items[index.row()].startsGroup ? theme::kSideGroupGap : 0;
    return {list_.viewport()->width(), rowHeight_ + theme::kSideRowGap + above};
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const ControlLook& look = lookOf(list_);
    const SideItem& item = list_.model_->items[index.row()];
    const QRect row(option.rect.left(), option.rect.bottom() + 1 - theme::kSideRowGap - rowHeight_, option.rect.width(),
                    rowHeight_);
    if (item.startsGroup) {
      const double y = row.top() - theme::kSideGroupGap / 2.0;
      const double line = hairline(*painter);
      painter->fillRect(QRectF(row.left() + theme::kSideRowInset, snappedY(*painter, {0, y}),
                               row.width() - theme::kSideRowInset * 2, line),
                        look.palette.hairline);
    }
    const bool chosen = index == list_.currentIndex();
    if (chosen)
      drawRounded(*painter, row, theme::kRowCorner, look.palette.selection);
    else if (option.state.testFlag(QStyle::State_MouseOver))
      drawRounded(*painter, row, theme::kRowCorner, look.palette.tile);
    if (chosen && list_.hasFocus() && list_.byKeyboard_) drawFocusLine(*painter, row, theme::kRowCorner, look);
    paintWords(*painter, row, item, chosen, look);
    painter->restore();
  }

 private:
  void paintWords(QPainter& painter, const QRect& row, const SideItem& item, bool chosen,
                  const ControlLook& look) const {
    const QColor ink = chosen ? look.palette.accentWord(look.accent) : look.palette.primary;
    const auto place = [&](int x, int width) {
      return QRectF(
          QStyle::visualRect(list_.layoutDirection(), row, QRect(row.left() + x, row.top(), width, row.height())));
    };
    QRectF symbol = place(theme::kSideRowInset, theme::kSideSymbol);
    symbol =
        QRectF(symbol.left(), symbol.center().y() - theme::kSideSymbol / 2.0, theme::kSideSymbol, theme::kSideSymbol);
    drawControlSymbol(painter, item.symbol, symbol, chosen ? ink : look.palette.secondary);
    if (list_.showsSymbolsOnly()) return;
    constexpr int text = theme::kSideRowInset + theme::kSideSymbol + theme::kSideSymbolGap;
    const bool mirrored = list_.layoutDirection() == Qt::RightToLeft;
    const Qt::Alignment start = mirrored ? Qt::AlignRight : Qt::AlignLeft;
    const Qt::Alignment end = mirrored ? Qt::AlignLeft : Qt::AlignRight;
    int space = row.width() - text - theme::kSideRowInset;
    if (!item.count.isEmpty()) {
      const int width = static_cast<int>(std::ceil(TextLine(item.count, TextStyle::Caption).width()));
      drawTextIn(painter, place(row.width() - theme::kSideRowInset - width, width), item.count, TextStyle::Caption,
                 chosen ? ink : look.palette.secondary, end);
      space -= width + theme::kRowGap;
    }
    drawTextIn(painter, place(text, std::max(0, space)), item.title, TextStyle::Body, ink, start);
  }

  SideList& list_;
  int rowHeight_;
};

SideList::SideList(const QString& label, int rowHeight, QWidget* parent) : QListView(parent), model_(new Model(this)) {
  becomePaintedList(*this, label);
  setModel(model_);
  setItemDelegate(new Painter(*this, rowHeight));
}

SideList::~SideList() = default;

void SideList::setItems(const QList<SideItem>& items) {
  if (items == model_->items) return;
  const QString before = chosen();
  model_->set(items);
  choose(model_->rowOf(before) >= 0 ? before : items.value(0).id);
}

QString SideList::chosen() const {
  const QModelIndex current = currentIndex();
  return current.isValid() ? model_->items.value(current.row()).id : QString();
}

void SideList::choose(const QString& id) {
  isQuiet_ = true;
  setCurrentIndex(model_->index(model_->rowOf(id)));
  isQuiet_ = false;
}

bool SideList::showsSymbolsOnly() const { return viewport()->width() <= theme::kSideSymbolRow; }

QSize SideList::sizeHint() const { return {theme::kSideWidth - theme::kSidePadding * 2, 200}; }

void SideList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QListView::currentChanged(current, previous);
  viewport()->update();
  if (!isQuiet_ && current.isValid()) Q_EMIT chosenChanged(chosen());
}

void SideList::focusInEvent(QFocusEvent* event) {
  byKeyboard_ = isKeyboardReason(event->reason());
  QListView::focusInEvent(event);
}

bool SideList::viewportEvent(QEvent* event) {
  return PanelTip::answer(*this, *event) || QListView::viewportEvent(event);
}

}  // namespace tarnwick
