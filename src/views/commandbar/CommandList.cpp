#include "views/commandbar/CommandList.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QStyledItemDelegate>
#include <algorithm>
#include <cmath>
#include <utility>

#include "views/commandbar/CommandBarMeasures.h"
#include "views/commandbar/CommandBarWords.h"
#include "views/commandbar/EmphasisedText.h"
#include "views/commandbar/KeyHint.h"
#include "views/controls/ControlLook.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Mirroring.h"
#include "views/controls/PaintedList.h"
#include "views/controls/PanelTip.h"
#include "views/theme/Emoji.h"
#include "views/theme/Glass.h"
#include "widgets/FileWords.h"

namespace tarnwick {

namespace {

using Kind = CommandItem::Kind;

constexpr qsizetype kMostRows = 12;

/// What a row says below that: of a file its folder, in the form in which people know it.
QString captionOf(const CommandItem& item) {
  return item.kind == Kind::File ? shortFolder(item.subtitle) : item.subtitle;
}

/// The words that a row shows first.
const QString& wordsOf(const CommandItem& item) { return item.kind == Kind::Symbol ? item.subtitle : item.title; }

/// Where the name of a symbol ends and what Return does with it begins; -1 for all other rows.
qsizetype quietPart(const CommandItem& item) {
  return item.kind == Kind::Symbol ? item.subtitle.lastIndexOf(QStringLiteral(" · ")) : -1;
}

bool startsBelow(const QList<CommandRow>& rows, int row) { return rows[row].below && row > 0 && !rows[row - 1].below; }

bool canReveal(const CommandItem& item) { return !item.path.isEmpty(); }

}  // namespace

class CommandList::Model final : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  QList<CommandRow> rows;

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(rows.size());
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid() || index.row() >= rows.size()) return {};
    const CommandItem& item = rows[index.row()].item;
    switch (role) {
      case Qt::DisplayRole:
      case Qt::AccessibleTextRole:
        return item.title;
      case Qt::AccessibleDescriptionRole:
        return captionOf(item);
      default:
        return {};
    }
  }
  /// Only the rows between what both lists begin and end with are others.
  void set(const QList<CommandRow>& wanted) {
    const auto [oldFirst, newFirst] = std::ranges::mismatch(rows, wanted);
    const qsizetype same = oldFirst - rows.begin();
    const qsizetype gone = rows.size() - same;
    const qsizetype added = wanted.size() - same;
    if (gone > 0) {
      beginRemoveRows({}, static_cast<int>(same), static_cast<int>(rows.size() - 1));
      rows.resize(same);
      endRemoveRows();
    }
    if (added > 0) {
      beginInsertRows({}, static_cast<int>(same), static_cast<int>(wanted.size() - 1));
      rows = wanted;
      endInsertRows();
    }
  }
};

class CommandList::Painter final : public QStyledItemDelegate {
 public:
  explicit Painter(CommandList& list) : QStyledItemDelegate(&list), list_(list) {}

  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const override {
    const bool divided = startsBelow(list_.rows(), index.row());
    return {list_.viewport()->width(), theme::kBarRowHeight + (divided ? theme::kBarDivider : 0)};
  }

  /// All that a row says, where that is more than is seen of it.
  QString tipOf(int number) const {
    const CommandRow& row = list_.rows()[number];
    const double width = textWidth(list_.viewport()->width(), row.item, number == list_.currentIndex().row());
    const bool isCut =
        titleOf(row).width() > width ||
        (!isOneLine(row.item) && TextLine(captionOf(row.item), TextStyle::CommandCaption).width() > width);
    if (!isCut) return {};
    return isOneLine(row.item) ? wordsOf(row.item) : row.item.title + u'\n' + row.item.subtitle;
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    if (!list_.showsWhole(option.rect)) return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const ControlLook& look = lookOf(list_);
    const CommandRow& row = list_.rows()[index.row()];
    QRectF box = option.rect;
    if (startsBelow(list_.rows(), index.row())) {
      paintDivider(*painter, box, look);
      box.setTop(box.top() + theme::kBarDivider);
    }
    const bool chosen = index == list_.currentIndex();
    if (chosen)
      drawRounded(*painter, box, theme::kBarRowCorner, look.palette.selection);
    else if (option.state.testFlag(QStyle::State_MouseOver))
      drawRounded(*painter, box, theme::kBarRowCorner, look.palette.tileHover);
    paintRow(*painter, box, row, look, chosen);
    painter->restore();
  }

 private:
  static void paintDivider(QPainter& painter, const QRectF& box, const ControlLook& look) {
    const double thin = hairline(painter);
    const double y = snappedY(painter, {box.left(), box.top() + theme::kBarDivider / 2.0});
    painter.fillRect(QRectF(box.left() + theme::kBarIconLeft, y, box.width() - theme::kBarIconLeft * 2, thin),
                     look.palette.hairline);
  }

  void paintRow(QPainter& painter, const QRectF& box, const CommandRow& row, const ControlLook& look,
                bool chosen) const {
    const Mirroring mirror(*list_.viewport());
    const CommandItem& item = row.item;
    const QRectF icon(box.left() + theme::kBarIconLeft, box.center().y() - theme::kBarIcon / 2, theme::kBarIcon,
                      theme::kBarIcon);
    if (list_.picture_) list_.picture_(painter, mirror(icon), item);
    const double right = box.right() - theme::kBarRowTextRight;
    if (chosen && !list_.note_.isEmpty()) {
      const double width = noteWidth();
      drawTextIn(painter, mirror(QRectF(right - width, box.top(), width, box.height())), list_.note_,
                 TextStyle::CommandCaption, look.palette.secondary, mirror.ending());
    } else if (chosen) {
      const KeyHint hint = hintOf(item);
      hint.draw(painter, mirror(QRectF(right - hint.width(), box.top(), hint.width(), box.height())), look,
                mirror.isMirrored());
    }
    const double left = box.left() + theme::kBarRowTextLeft;
    const auto line = [&](double share) {
      return mirror(QRectF(left, box.top() + box.height() * share - 12, textWidth(box.width(), item, chosen), 24));
    };
    const bool oneLine = isOneLine(item);
    EmphasisedText words = titleOf(row);
    words.quietInk = look.palette.secondary;
    words.draw(painter, line(oneLine ? 0.5 : theme::kTitleShare), look.palette.primary,
               look.palette.accentWord(Accent::Blue), mirror.reading());
    if (oneLine) return;
    drawTextIn(painter, line(theme::kCaptionShare), captionOf(item), TextStyle::CommandCaption, look.palette.secondary,
               mirror.reading(), item.kind == Kind::File ? Elide::Middle : Elide::End);
  }

  static bool isOneLine(const CommandItem& item) { return item.kind == Kind::Symbol || item.subtitle.isEmpty(); }
  static EmphasisedText titleOf(const CommandRow& row) {
    const bool isCalculation = row.item.kind == Kind::Calculation;
    EmphasisedText title{wordsOf(row.item), row.matched, isCalculation ? TextStyle::Gauge : TextStyle::CommandTitle,
                         quietPart(row.item)};
    // What a name ends with tells one from the next.
    if (canReveal(row.item)) title.elide = Elide::Middle;
    return title;
  }
  static KeyHint hintOf(const CommandItem& item) { return KeyHint(CommandBarWords::hint(item.kind, canReveal(item))); }
  double noteWidth() const { return std::ceil(TextLine(list_.note_, TextStyle::CommandCaption).width()); }
  /// What a row has for its words.
  double textWidth(double width, const CommandItem& item, bool chosen) const {
    width -= theme::kBarRowTextLeft + theme::kBarRowTextRight;
    if (chosen) width -= (list_.note_.isEmpty() ? hintOf(item).width() : noteWidth()) + theme::kBarHintGap;
    return std::max(0.0, width);
  }

  CommandList& list_;
};

CommandList::CommandList(QWidget* parent) : QListView(parent), model_(new Model(this)), painter_(new Painter(*this)) {
  becomePaintedList(*this, CommandBarWords::tr("Results"));
  setModel(model_);
  setItemDelegate(painter_);
  setFocusPolicy(Qt::NoFocus);
  setVerticalScrollMode(ScrollPerItem);
  setViewportMargins(theme::kBarListPadding, theme::kBarListPadding, theme::kBarListPadding, theme::kBarListPadding);
}

CommandList::~CommandList() = default;

void CommandList::setRows(const QList<CommandRow>& rows) {
  if (rows == model_->rows) return;
  model_->set(rows);
  scheduleDelayedItemsLayout();
  viewport()->update();
}

const QList<CommandRow>& CommandList::rows() const { return model_->rows; }

void CommandList::choose(int row) {
  const QModelIndex index = row < 0 ? QModelIndex() : model_->index(row, 0);
  if (!index.isValid() || model_->rows[row].item.id != noted_) note_.clear();
  if (index == currentIndex()) return;
  setCurrentIndex(index);
  viewport()->update();
}

void CommandList::say(const QString& note) {
  note_ = note;
  noted_ = currentIndex().isValid() ? model_->rows[currentIndex().row()].item.id : QString();
  viewport()->update();
}

int CommandList::heightOf(int row) const {
  return theme::kBarRowHeight + (startsBelow(model_->rows, row) ? theme::kBarDivider : 0);
}

int CommandList::shownRows() const {
  const auto most = static_cast<int>(std::min<qsizetype>(model_->rows.size(), kMostRows));
  int height = theme::kBarListPadding * 2;
  for (int row = 0; row < most; ++row) {
    height += heightOf(row);
    if (row > 0 && height > space_) return row;
  }
  return most;
}

int CommandList::wholeHeight() const {
  if (model_->rows.isEmpty()) return 0;
  int height = theme::kBarListPadding * 2;
  const int end = shownRows();
  for (int row = 0; row < end; ++row) height += heightOf(row);
  // A line that is scrolled to would push the last row out.
  bool hasLineBelow = false;
  for (int row = end; row < model_->rows.size(); ++row) hasLineBelow = hasLineBelow || startsBelow(model_->rows, row);
  return hasLineBelow && height + theme::kBarDivider <= space_ ? height + theme::kBarDivider : height;
}

void CommandList::scrollTo(const QModelIndex& index, ScrollHint hint) {
  if (index.isValid() && shownRows() < model_->rows.size()) QListView::scrollTo(index, hint);
}

/// While it grows the rows come out from behind its edge.
bool CommandList::showsWhole(const QRect& row) const {
  return height() < wholeHeight() || viewport()->rect().contains(row);
}

int CommandList::rowAt(const QPoint& place) const {
  const QModelIndex index = indexAt(place);
  return index.isValid() && showsWhole(visualRect(index)) ? index.row() : -1;
}

void CommandList::pressItem(const QModelIndex& index) {
  if (index.isValid()) Q_EMIT opened(index.row());
}

QStringList CommandList::itemActions(const QModelIndex& index) const {
  if (!index.isValid() || !canReveal(model_->rows[index.row()].item)) return {};
  return {CommandBarWords::tr("Show in Files")};
}

void CommandList::runItemAction(const QModelIndex& index, qsizetype) { Q_EMIT revealRequested(index.row()); }

bool CommandList::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QListView::viewportEvent(event);
  const int row = rowAt(static_cast<QHelpEvent*>(event)->pos());
  const QString tip = row < 0 ? QString() : painter_->tipOf(row);
  PanelTip::show(*viewport(), tip, row < 0 ? QRect() : visualRect(model_->index(row, 0)));
  return true;
}

void CommandList::mousePressEvent(QMouseEvent* event) {
  pressed_ = event->button() == Qt::LeftButton ? rowAt(event->position().toPoint()) : -1;
}

void CommandList::mouseReleaseEvent(QMouseEvent* event) {
  const int row = rowAt(event->position().toPoint());
  if (event->button() == Qt::LeftButton && row >= 0 && row == std::exchange(pressed_, -1)) Q_EMIT opened(row);
}

}  // namespace tarnwick
