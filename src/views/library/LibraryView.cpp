#include "views/library/LibraryView.h"

#include <QScrollBar>
#include <QStyle>
#include <algorithm>
#include <cmath>

#include "store/AppStore.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/PaintedList.h"
#include "views/families/Rooms.h"
#include "widgets/LibraryWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPickerTile = 120;
constexpr int kWheelStep = 48;

int wordWidth(const QString& text, TextStyle style) {
  return static_cast<int>(std::ceil(TextLine(text, style).width()));
}

int tileWidth(const LibraryItem& item) {
  return item.entry.widget ? static_cast<int>(std::ceil(PreviewTiles::widthOf(*item.entry.widget))) : kPickerTile;
}

}  // namespace

class LibraryView::Model final : public QAbstractListModel {
 public:
  Model(LibraryView& view) : QAbstractListModel(&view), view_(view) {}

  QList<LibraryShelf> shelves;
  QList<const LibraryItem*> items;
  QList<const LibraryShelf*> shelfOf;

  void set(const QList<LibraryShelf>& wanted) {
    beginResetModel();
    shelves = wanted;
    items.clear();
    shelfOf.clear();
    for (const LibraryShelf& shelf : std::as_const(shelves)) {
      for (const LibraryItem& item : shelf.items) {
        items.append(&item);
        shelfOf.append(&shelf);
      }
    }
    endResetModel();
  }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(items.size());
  }
  Qt::ItemFlags flags(const QModelIndex& index) const override {
    if (!index.isValid()) return Qt::NoItemFlags;
    const bool carries = items[index.row()]->entry.widget.has_value();
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | (carries ? Qt::ItemIsDragEnabled : Qt::NoItemFlags);
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid() || index.row() >= items.size()) return {};
    if (role == Qt::DisplayRole) return items[index.row()]->title();
    if (role == Qt::AccessibleTextRole) {
      const QString mark = view_.markOf(index.row());
      return mark.isEmpty() ? items[index.row()]->title() : items[index.row()]->title() + u", "_s + mark;
    }
    if (role == Qt::AccessibleDescriptionRole) {
      const QString& shelf = shelfOf[index.row()]->name;
      return view_.isPlaced(index.row()) ? shelf + u", "_s + LibraryWords::tr("On dock") : shelf;
    }
    return {};
  }

 private:
  LibraryView& view_;
};

LibraryView::LibraryView(AppStore& store, const PreviewSources& sources, QWidget* parent)
    : QListView(parent),
      store_(store),
      tiles_(sources, [this] { return isSeen(); }),
      model_(new Model(*this)),
      add_(new Button(LibraryWords::tr("Add"), Button::Role::Primary, parent)) {
  becomePaintedList(*this, LibraryWords::tr("Widgets"));
  setModel(model_);
  setDragEnabled(true);
  setFocusPolicy(Qt::StrongFocus);
  add_->setFocusPolicy(Qt::NoFocus);
  add_->hide();
  add_->installEventFilter(this);
  connect(add_, &QPushButton::clicked, this, [this] { activate(activeRow()); });
  scrolled_.setSingleShot(true);
  scrolled_.setInterval(theme::kScrollStaysMilliseconds);
  connect(&scrolled_, &QTimer::timeout, viewport(), qOverload<>(&QWidget::update));
  connect(&tiles_, &PreviewTiles::changed, this, &LibraryView::updateCards);
  connect(&store, &AppStore::ticked, this, &LibraryView::refreshTiles);
  connect(&store, &AppStore::configChanged, this, [this] {
    takePlaced();
    takeLook();
    refreshTiles();
  });
}

LibraryView::~LibraryView() = default;

QString LibraryView::buttonWord(const LibraryItem& item) {
  return item.entry.picker ? LibraryWords::tr("Choose…") : LibraryWords::tr("Add");
}

void LibraryView::setShelves(const QList<LibraryShelf>& shelves) {
  const LibraryItem* chosen = itemOf(currentIndex());
  const QString kept = chosen ? chosen->entry.id : QString();
  hovered_ = -1;
  model_->set(shelves);
  words_.clear();
  for (const LibraryItem* item : std::as_const(model_->items)) words_.append(wordWidth(item->title(), TextStyle::Body));
  placed_.clear();
  takePlaced();
  layoutWidth_ = -1;
  doItemsLayout();
  verticalScrollBar()->setValue(0);
  const auto again = std::ranges::find_if(model_->items, [&kept](const auto* item) { return item->entry.id == kept; });
  if (!kept.isEmpty() && again != model_->items.end()) choose(static_cast<int>(again - model_->items.begin()));
  scrolled_.stop();
  placeButton();
  viewport()->update();
}

const QList<LibraryShelf>& LibraryView::shelves() const { return model_->shelves; }

void LibraryView::setTarget(const QUuid& profile) {
  if (profile == target_) return;
  target_ = profile;
  takePlaced();
}

void LibraryView::takePlaced() {
  QList<bool> placed(model_->items.size(), false);
  for (const DockProfile& profile : store_.config().profiles) {
    if (profile.id != target_) continue;
    for (qsizetype i = 0; i < placed.size(); ++i) placed[i] = LibraryShelves::isPlaced(*model_->items[i], profile);
  }
  if (std::ranges::equal(placed, placed_)) return;  // The toolkit's own comparison minds lists that hold nothing.
  placed_ = placed;
  viewport()->update();
}

void LibraryView::choose(int row) {
  const QModelIndex index = model_->index(row);
  if (index.isValid())
    setCurrentIndex(index);
  else
    selectionModel()->clear();
}

const LibraryItem* LibraryView::itemOf(const QModelIndex& index) const {
  return index.isValid() && index.row() < model_->items.size() ? model_->items[index.row()] : nullptr;
}

const LibraryItem& LibraryView::itemAt(int row) const { return *model_->items[row]; }

bool LibraryView::isPlaced(int row) const { return placed_.value(row, false); }

QString LibraryView::markOf(int row) const {
  const LibraryItem& item = itemAt(row);
  if (!item.entry.widget) return {};
  if (Rooms::comesLater(item.kind)) return LibraryWords::tr("Later");
  return tiles_.isSample(item.entry.widget->id) ? LibraryWords::tr("Sample") : QString();
}

// --- Layout ---------------------------------------------------------------------------------------------------------

/// Cards are as wide as their tile, their name and what can ever be beside that, so that neither is cut, and a card
/// that has just been added does not push the others away.
void LibraryView::doItemsLayout() {
  const int width = viewport()->width();
  if (width == layoutWidth_) return;
  layoutWidth_ = width;
  const int placedWidth = wordWidth(LibraryWords::tr("On dock"), TextStyle::Caption) + kMark + kMarkGap;
  QList<QList<int>> widths;
  qsizetype row = 0;
  for (const LibraryShelf& shelf : std::as_const(model_->shelves)) {
    widths.append(QList<int>());
    for (const LibraryItem& item : shelf.items) {
      const int button = wordWidth(buttonWord(item), TextStyle::BodyStrong) + theme::kButtonPadding * 2;
      const int beside = std::max(button, item.entry.widget ? placedWidth : 0);
      widths.last().append(std::max(tileWidth(item), words_.value(row) + kNameGap + beside));
      ++row;
    }
  }
  layout_ = CardLayout::make(widths, width);
  updateGeometries();
}

void LibraryView::updateGeometries() {
  QScrollBar& bar = *verticalScrollBar();
  bar.setPageStep(viewport()->height());
  bar.setSingleStep(kWheelStep);
  bar.setRange(0, std::max(0, layout_.height - viewport()->height()));
}

int LibraryView::verticalOffset() const { return verticalScrollBar()->value(); }

QRect LibraryView::cardRect(int row) const {
  if (row < 0 || row >= layout_.cards.size()) return {};
  return QStyle::visualRect(layoutDirection(), viewport()->rect(), layout_.cards[row]).translated(0, -verticalOffset());
}

/// On the card's upper edge, at the picture's end: the tile's uppermost line stays free.
QRect LibraryView::markRect(int row) const {
  constexpr int height = 18;
  constexpr int inset = 10;
  const QString mark = markOf(row);
  if (mark.isEmpty()) return {};
  const QRect card = cardRect(row);
  const int width = std::min(wordWidth(mark, TextStyle::Caption) + height, card.width() - inset * 2);
  const int left = isRightToLeft() ? card.left() + inset : card.right() + 1 - inset - width;
  return {left, card.top() - height / 2 + 3, width, height};
}

QRect LibraryView::visualRect(const QModelIndex& index) const {
  return index.isValid() ? cardRect(index.row()) : QRect();
}

QModelIndex LibraryView::indexAt(const QPoint& point) const {
  const QPoint logical(isRightToLeft() ? viewport()->width() - 1 - point.x() : point.x(), point.y() + verticalOffset());
  const int row = layout_.cardAt(logical);
  return row < 0 ? QModelIndex() : model_->index(row);
}

std::pair<int, int> LibraryView::seen() const {
  return layout_.between(verticalOffset(), verticalOffset() + viewport()->height());
}

void LibraryView::scrollTo(const QModelIndex& index, ScrollHint hint) {
  if (!index.isValid() || index.row() >= layout_.cards.size()) return;
  const QRect& card = layout_.cards[index.row()];
  QScrollBar& bar = *verticalScrollBar();
  if (hint == PositionAtTop || card.top() - CardLayout::kHeading < bar.value())
    bar.setValue(card.top() - CardLayout::kHeading);
  else if (card.bottom() + CardLayout::kMargin > bar.value() + viewport()->height())
    bar.setValue(card.bottom() + CardLayout::kMargin - viewport()->height());
}

QModelIndex LibraryView::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
  const int count = model_->rowCount();
  if (count == 0) return {};
  const int from = currentIndex().row();
  if (!currentIndex().isValid()) return model_->index(seen().first < count ? seen().first : 0);
  const int ahead = isRightToLeft() ? -1 : 1;
  const int page = std::max(1, viewport()->height() - CardLayout::kHeading);
  const auto row = [&]() -> int {
    switch (action) {
      case MoveLeft:
        return from - ahead;
      case MoveRight:
        return from + ahead;
      case MoveNext:
        return from + 1;
      case MovePrevious:
        return from - 1;
      case MoveUp:
        return layout_.beside(from, -1);
      case MoveDown:
        return layout_.beside(from, 1);
      case MovePageUp:
        return layout_.paged(from, -page);
      case MovePageDown:
        return layout_.paged(from, page);
      case MoveHome:
        return 0;
      case MoveEnd:
        return count - 1;
    }
    return from;
  };
  return model_->index(std::clamp(row(), 0, count - 1));
}

void LibraryView::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags flags) {
  if (const QModelIndex index = indexAt(rect.center()); index.isValid()) selectionModel()->select(index, flags);
}

QRegion LibraryView::visualRegionForSelection(const QItemSelection& selection) const {
  QRegion region;
  for (const QModelIndex& index : selection.indexes()) region += visualRect(index);
  return region;
}

void LibraryView::resizeEvent(QResizeEvent* event) {
  QAbstractItemView::resizeEvent(event);
  doItemsLayout();
  updateGeometries();
  placeButton();
}

void LibraryView::scrollContentsBy(int, int) {
  scrolled_.start();
  setHovered(indexAt(viewport()->mapFromGlobal(QCursor::pos())).row());
  placeButton();
  viewport()->update();
}

// --- Live tiles -----------------------------------------------------------------------------------------------------

void LibraryView::takeLook() {
  // Tiles lie on the cards of the window, so they are painted in its scheme.
  const bool light = lookOf(*this).palette.light;
  tiles_.setDirection(layoutDirection());
  tiles_.setPalette(
      Palette::make(light ? DockStyle::LightGlass : DockStyle::DarkGlass, Backdrop::Plain, store_.config().monochrome));
  viewport()->update();
}

void LibraryView::showEvent(QShowEvent* event) {
  takeLook();
  QAbstractItemView::showEvent(event);
}

void LibraryView::changeEvent(QEvent* event) {
  QAbstractItemView::changeEvent(event);
  if (event->type() == QEvent::StyleChange || event->type() == QEvent::LayoutDirectionChange) takeLook();
  if (event->type() == QEvent::FontChange || event->type() == QEvent::LayoutDirectionChange) placeButton();
}

void LibraryView::refreshTiles() {
  if (isSeen()) showTiles();
}

void LibraryView::showTiles() {
  QList<DockWidget> widgets;
  const auto [first, last] = seen();
  for (int row = first; row < last; ++row)
    if (const auto& widget = model_->items[row]->entry.widget) widgets.append(*widget);
  tiles_.show(widgets, store_.now());
}

void LibraryView::updateCards(const QSet<QUuid>& widgets) {
  const auto [first, last] = seen();
  for (int row = first; row < last; ++row)
    if (const auto& widget = model_->items[row]->entry.widget; widget && widgets.contains(widget->id)) updateCard(row);
}

}  // namespace tarnwick
