#include "views/library/AnswerTree.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>

#include "views/controls/ControlLook.h"
#include "views/controls/ControlTheme.h"
#include "views/library/AnswerModel.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kRow = 24;
constexpr int kIndent = 16;
constexpr int kInset = 6;  ///< Behind the value of a row, half of it.
constexpr int kMostRows = 10;
constexpr double kBranchMark = 10;
constexpr double kCheckMark = 12;
constexpr int kNameShare = 55;  ///< Percent of a row that a long name may take from a long value.

QColor valueColor(const ControlLook& look, AnswerModel::Sort sort) {
  switch (sort) {
    case AnswerModel::Sort::Text:
      return look.palette.accentWord(Accent::Green);
    case AnswerModel::Sort::Truth:
    case AnswerModel::Sort::Nothing:
      return look.palette.accentWord(Accent::Purple);
    case AnswerModel::Sort::Object:
    case AnswerModel::Sort::List:
    case AnswerModel::Sort::Rest:
      return look.palette.secondary;
    case AnswerModel::Sort::Number:
      break;
  }
  return look.palette.primary;
}

}  // namespace

class AnswerTree::Painter final : public QStyledItemDelegate {
 public:
  explicit Painter(AnswerTree& tree) : QStyledItemDelegate(&tree), tree_(tree) {}

  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override { return {0, kRow}; }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const ControlLook& look = lookOf(tree_);
    const bool isMirrored = tree_.isRightToLeft();
    const Qt::Alignment start = isMirrored ? Qt::AlignRight : Qt::AlignLeft;
    const Qt::Alignment end = isMirrored ? Qt::AlignLeft : Qt::AlignRight;
    const AnswerModel& model = *tree_.model_;
    const AnswerModel::Sort sort = model.sort(index);
    const QRect row = option.rect.adjusted(isMirrored ? kInset * 2 : 2, 0, isMirrored ? -2 : -kInset * 2, 0);
    int space = row.width();
    const auto place = [&](int from, int width) {
      return QRectF(QStyle::visualRect(tree_.layoutDirection(), row, QRect(row.left() + from, row.top(), width, kRow)));
    };
    if (index == tree_.chosen_) {
      space -= kInset * 3;
      QRectF mark(0, 0, kCheckMark, kCheckMark);
      mark.moveCenter(place(row.width() - kInset * 2, kInset * 2).center());
      drawControlSymbol(*painter, u"checkmark"_s, mark, look.palette.accentWord(look.accent));
    }
    const QString name = model.name(index);
    const QString value = model.value(index);
    const auto widthOf = [](const QString& text, TextStyle style) {
      return static_cast<int>(std::ceil(TextLine(text, style).width()));
    };
    const int wanted = widthOf(value, TextStyle::ListRowStrong);
    const int nameWidth = std::min(widthOf(name, TextStyle::ListRow),
                                   std::max(space * kNameShare / 100, space - wanted - theme::kRowGap));
    drawTextIn(*painter, place(0, nameWidth), name, TextStyle::ListRow,
               sort == AnswerModel::Sort::Rest ? look.palette.secondary : look.palette.primary, start, Elide::Middle);
    const int left = nameWidth + theme::kRowGap;
    drawTextIn(*painter, place(left, std::max(0, space - left)), value, TextStyle::ListRowStrong,
               valueColor(look, sort), end);
  }

 private:
  AnswerTree& tree_;
};

AnswerTree::AnswerTree(const QString& label) : model_(new AnswerModel(this)) {
  setAccessibleName(label);
  setFrameShape(QFrame::NoFrame);
  setHeaderHidden(true);
  setModel(model_);
  setItemDelegate(new Painter(*this));
  setUniformRowHeights(true);
  setIndentation(kIndent);
  setExpandsOnDoubleClick(false);
  setTabKeyNavigation(false);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setMouseTracking(true);
  setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(this, &QAbstractItemView::clicked, this, &AnswerTree::take);
  connect(this, &QTreeView::expanded, this, &AnswerTree::fitHeight);
  connect(this, &QTreeView::collapsed, this, &AnswerTree::fitHeight);
}

AnswerTree::~AnswerTree() = default;

void AnswerTree::setAnswer(const QJsonValue& answer) {
  chosen_ = QModelIndex();
  model_->setAnswer(answer);
  openSome();
  fitHeight();
}

bool AnswerTree::isEmpty() const { return model_->rowCount() == 0; }

void AnswerTree::choose(const QString& path) {
  const QModelIndex found = path.isEmpty() ? QModelIndex() : model_->find(path);
  if (found == chosen_) return;
  chosen_ = found;
  for (QModelIndex outer = found.parent(); outer.isValid(); outer = outer.parent()) expand(outer);
  if (found.isValid()) {
    setCurrentIndex(found);
    scrollTo(found);
  }
  viewport()->update();
}

/// Level by level, as long as all of it is seen.
void AnswerTree::openSome() {
  QList<QModelIndex> level;
  for (int row = 0; row < model_->rowCount(); ++row) level << model_->index(row, 0);
  qsizetype seen = level.size();
  while (!level.isEmpty()) {
    QList<QModelIndex> next;
    for (const QModelIndex& index : std::as_const(level)) {
      if (!model_->hasChildren(index)) continue;
      if (model_->canFetchMore(index)) model_->fetchMore(index);
      const int inside = model_->rowCount(index);
      if (seen + inside > kMostRows) return;
      seen += inside;
      expand(index);
      for (int row = 0; row < inside; ++row) next << model_->index(row, 0, index);
    }
    level = next;
  }
}

void AnswerTree::take(const QModelIndex& index) {
  if (model_->canShow(index))
    Q_EMIT chosen(model_->path(index));
  else if (model_->hasChildren(index))
    setExpanded(index, !isExpanded(index));
}

// --- Its size -------------------------------------------------------------------------------------------------------

int AnswerTree::shownRows() const {
  int rows = 0;
  for (QModelIndex at = model_->index(0, 0); at.isValid() && rows <= kMostRows; at = indexBelow(at)) ++rows;
  return rows;
}

QSize AnswerTree::sizeHint() const {
  const int rows = shownRows();
  // Half a row says that more follow.
  const int height = rows > kMostRows ? kMostRows * kRow + kRow / 2 : std::max(1, rows) * kRow;
  return {200, height};
}

void AnswerTree::fitHeight() {
  setFixedHeight(sizeHint().height());
  updateGeometry();
}

// --- Painting and keys ----------------------------------------------------------------------------------------------

void AnswerTree::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  const ControlLook& look = lookOf(*this);
  const QRectF ground = QRectF(option.rect).adjusted(0, 1, 0, -1);
  const bool isCurrent = index == currentIndex() && hasFocus();
  if (index == chosen_)
    drawRounded(*painter, ground, theme::kSegmentCorner, look.palette.selection);
  else if (isCurrent || (viewport()->underMouse() && option.state.testFlag(QStyle::State_MouseOver)))
    drawRounded(*painter, ground, theme::kSegmentCorner, look.palette.tile);
  if (isCurrent && byKeyboard_) drawFocusLine(*painter, ground, theme::kSegmentCorner, look);
  QStyleOptionViewItem plain = option;
  plain.palette.setBrush(QPalette::Highlight, Qt::transparent);
  plain.state &= ~(QStyle::State_MouseOver | QStyle::State_Selected | QStyle::State_HasFocus);
  plain.showDecorationSelected = false;
  QTreeView::drawRow(painter, plain, index);
  painter->restore();
}

void AnswerTree::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const {
  if (!model_->hasChildren(index)) return;
  const bool isMirrored = isRightToLeft();
  QRectF mark(0, 0, kBranchMark, kBranchMark);
  const double middle = isMirrored ? rect.left() + kIndent / 2.0 : rect.right() + 1 - kIndent / 2.0;
  mark.moveCenter({middle, rect.top() + rect.height() / 2.0});
  const QString closed = isMirrored ? u"chevron.left"_s : u"chevron.right"_s;
  drawControlSymbol(*painter, isExpanded(index) ? u"chevron.down"_s : closed, mark, lookOf(*this).palette.secondary);
}

void AnswerTree::keyPressEvent(QKeyEvent* event) {
  byKeyboard_ = true;
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      if (event->modifiers() & Qt::ControlModifier) {
        event->ignore();
        return;
      }
      if (currentIndex().isValid()) take(currentIndex());
      return;
    case Qt::Key_Escape:
      event->ignore();
      return;
    default:
      QTreeView::keyPressEvent(event);
  }
}

void AnswerTree::focusInEvent(QFocusEvent* event) {
  byKeyboard_ = isKeyboardReason(event->reason());
  // The keyboard focus is on something visible.
  if (byKeyboard_ && !currentIndex().isValid()) setCurrentIndex(model_->index(0, 0));
  QTreeView::focusInEvent(event);
}

}  // namespace tarnwick
