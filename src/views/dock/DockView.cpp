#include "views/dock/DockView.h"

#include <QApplication>
#include <algorithm>
#include <utility>

#include "views/controls/TipBubble.h"
#include "views/dock/DockAccessible.h"
#include "views/dock/DockWords.h"
#include "views/theme/Theme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

bool sameOrder(const QList<DockWidget>& a, const QList<DockWidget>& b) {
  return std::ranges::equal(a, b, {}, &DockWidget::id, &DockWidget::id);
}

/// The first widget of a row that another does not have.
std::optional<qsizetype> firstNew(const QList<DockWidget>& row, const QList<DockWidget>& other) {
  const auto isNew = [&other](const QUuid& id) { return std::ranges::find(other, id, &DockWidget::id) == other.end(); };
  const auto found = std::ranges::find_if(row, isNew, &DockWidget::id);
  return found == row.end() ? std::nullopt : std::optional<qsizetype>(found - row.begin());
}

/// Whether two rows have no tile in common, as those of two profiles.
bool areStrangers(const QList<DockWidget>& a, const QList<DockWidget>& b) {
  if (a.isEmpty() && b.isEmpty()) return false;
  return std::ranges::none_of(
      a, [&b](const QUuid& id) { return std::ranges::find(b, id, &DockWidget::id) != b.end(); }, &DockWidget::id);
}

}  // namespace

DockView::DockView(Scheduler& scheduler, QWidget* parent)
    : QWidget(parent),
      tiles_(*this),
      icons_(tiles_),
      tabs_(tiles_.row(), tiles_.layout(), animator_, scheduler),
      scroll_(tiles_, animator_,
              [this] {
                relayout();
                drop_.follow();
                if (drag_.isActive()) dragTo(drag_.pointer());
              }),
      drag_(tiles_.row(), tiles_.layout(), animator_, scroll_.edges(),
            [this](const DockRow& row) { return layoutOf(row); }),
      drop_(tiles_, scroll_.edges(), scheduler),
      press_(tiles_, scheduler),
      hover_(
          tiles_, animator_, [this](qsizetype item) { updateItem(item); },
          [this](qsizetype item) { showMagnified(item); }),
      focus_(tiles_, [this](qsizetype item) { updateItem(item); }),
      state_{tiles_, hover_, press_, focus_, drag_, drop_, tabs_, panelOpen_, numbers_},
      shape_(tiles_, tabs_, drag_, drop_),
      items_(state_, icons_, animator_, [this](qsizetype item) { updateItem(item); }),
      painter_(state_, shape_, items_, [this] { update(); }),
      pointed_(tiles_, tabs_, shape_),
      tips_(scheduler) {
  installDockAccessibility();
  setAttribute(Qt::WA_TranslucentBackground);
  setMouseTracking(true);
  setAcceptDrops(true);
  setFocusPolicy(Qt::TabFocus);
  setAccessibleName(DockWords::tr("Dock"));
  connectParts();
  connectPress();
}

DockView::~DockView() = default;

void DockView::connectParts() {
  connect(&drag_, &TileDragController::moved, this, [this] {
    items_.noteMotion();
    updateRow();
  });
  connect(&drag_, &TileDragController::landed, this, [this] {
    relayout();
    if (shape_.takeWhole()) Q_EMIT shapeChanged();
  });
  connect(&tabs_, &ProfileTabs::moved, this, [this] {
    items_.noteMotion();
    if (tabs_.areMoving() || tabs_.share() > 0) relayout();
    update();
  });
  connect(&tabs_, &ProfileTabs::rested, this, &DockView::relayout);
  connect(&tabs_, &ProfileTabs::activated, this, &DockView::tabActivated);
  connect(&tabs_, &ProfileTabs::due, this, [this](bool shown) {
    showTabs(shown);
    rehover();
  });
  connect(&drop_, &DropController::entered, this, [this] { setPointer(std::nullopt); });
  connect(&drop_, &DropController::changed, this, &DockView::takeGuest);
  connect(&drop_, &DropController::filesDropped, this, &DockView::filesDropped);
  connect(&drop_, &DropController::widgetTextDropped, this, &DockView::widgetTextDropped);
  connect(&drop_, &DropController::applicationWanted, this, &DockView::applicationActivated);
  connect(&drop_, &DropController::tileWanted, this, [this](const QUuid& widget) {
    // What is open already a click would close.
    if (widget != panelOpen_) Q_EMIT tileActivated(widget);
  });
  connect(&tips_, &TipController::changed, this, &DockView::tipChanged);
}

void DockView::connectPress() {
  connect(&press_, &PressController::changed, this, &DockView::updateItem);
  connect(&press_, &PressController::pointed, this, [this](QPointF point) { setPointer(point); });
  connect(&press_, &PressController::clicked, this, &DockView::click);
  connect(&press_, &PressController::arrowClicked, this, [this](int arrow) { scroll_.turnPage(arrow); });
  connect(&press_, &PressController::held, this, [this](qsizetype item) {
    Q_EMIT windowsRequested(tiles_.applicationOf(item), shape_.beside(tiles_.place(item)));
  });
  connect(&press_, &PressController::dragBegun, this, &DockView::beginDrag);
  connect(&press_, &PressController::dragged, this, &DockView::dragTo);
  connect(&press_, &PressController::dropped, this, &DockView::drop);
  connect(&press_, &PressController::swiped, &tabs_, &ProfileTabs::swipeBy);
  connect(&press_, &PressController::swipeEnded, &tabs_, &ProfileTabs::endSwipe);
  connect(&press_, &PressController::moved, this, &DockView::moveRequested);
  connect(&press_, &PressController::moveEnded, this, &DockView::moveFinished);
  connect(&press_, &PressController::released, this, &DockView::released);
}

void DockView::setIconProvider(IconProvider provider) {
  icons_.setProvider(std::move(provider));
  forgetIcons();
}

void DockView::forgetIcons() {
  icons_.forget();
  items_.forgetAll();
  update();
}

// --- The row --------------------------------------------------------------------------------------------------------

void DockView::setRow(const DockRow& row) {
  const DockRow& before = tiles_.row();
  const bool isLaid = !tiles_.layout().glass.isEmpty();
  if (isLaid && row == before) return;
  if (isLaid && tiles_.looksLike(row)) {
    takeRefreshed(tiles_.takeWidgets(row));
    return;
  }
  if (drag_.isActive() && !sameOrder(row.widgets, before.widgets)) cancelDrag();
  const bool switches = row.activeTab != before.activeTab && row.tabs == before.tabs && tiles_.count() > 0;
  if (switches && isVisible()) tabs_.beginSlide(painter_.pictureOfRow(), tabs_.isForward(row));
  const auto lefts = drag_.visibleLefts();
  const bool isOneMore = row.widgets.size() == before.widgets.size() + 1;
  const std::optional<qsizetype> arrived = isLaid && isOneMore ? firstNew(row.widgets, before.widgets) : std::nullopt;
  applyRow(row);
  // A widget that was let go stays where space was made for it.
  if (arrived && wider_) scroll_.by(guestScroll_ - scroll_.position());
  if (arrived) scroll_.reveal(tiles_.layout().itemOf(RowItem::Kind::Widget, *arrived));
  drag_.carryOn(lefts);
  if (drag_.isActive()) dragTo(drag_.pointer());
  rehover();
}

void DockView::applyRow(const DockRow& row) {
  KeyboardFocus::Place keyboard = focus_.place();
  if (areStrangers(row.widgets, tiles_.row().widgets)) {
    // Another profile's row is walked from its beginning.
    keyboard.item = -1;
    scroll_.reset();
  }
  tiles_.take(row);
  drag_.setReduced(row.reduceMotion);
  hover_.takeRow();
  press_.takeRow();
  wheel_.reset();
  tabs_.takeRow();
  items_.forgetAll();
  relayout();
  takeRefreshed(tiles_.refresh());
  if (!focus_.restore(keyboard) && hasFocus()) focusItem(std::max<qsizetype>(focus_.item(), 0));
  names_.tell(*this, tiles_.names());
}

void DockView::refresh(const TileSources& sources, const std::function<bool(const DockWidget&)>& which) {
  takeRefreshed(tiles_.refresh(sources, which));
}

void DockView::takeRefreshed(const RowTiles::Refreshed& refreshed) {
  for (const qsizetype item : refreshed.items) {
    items_.forget(item);
    updateItem(item);
  }
  if (refreshed.saysOther) {
    setAccessibleDescription(tiles_.description());
    names_.tell(*this, tiles_.names());
    updateTip();
  }
  items_.followLaunches();
  items_.followLoading();
}

RowLayout DockView::layoutOf(const DockRow& row) const {
  const QRectF slot = QRectF(rect()).marginsRemoved(QMarginsF(margins()));
  return RowLayout::of(row, slot, tiles_.ratio(),
                       {scroll_.position(), tabs_.share(), isRightToLeft(), drag_.heldWidget(), guest_});
}

double DockView::widthWithGuest(double scale) const {
  double most = 0;
  // The row is not equally wide wherever it takes the guest in: that may part what stands close together.
  for (qsizetype index = 0; wider_ && index <= row().widgets.size(); ++index) {
    DockRow whole = RowLayout::withGuest(row(), {*wider_, index});
    whole.scale = scale;
    most = std::max(most, RowLayout::idealWidth(whole));
  }
  return most;
}

/// What is held over the dock may be a widget, and may go elsewhere in the row: the others make space for it.
void DockView::takeGuest() {
  updateRow();
  const std::optional<RowGuest> guest = drop_.guest();
  if (guest == guest_) return;
  if (guest && !wider_) {
    wider_ = guest->widget;
    Q_EMIT widthWanted();  // The window may grow within this.
  }
  const auto lefts = row().reduceMotion ? QHash<QString, double>() : drag_.lefts();
  guest_ = guest;
  const bool hadGap = !tiles_.layout().gap.isEmpty();
  if (hadGap) guestScroll_ = tiles_.layout().scroll;
  relayout();
  if (hadGap || !tiles_.layout().gap.isEmpty()) drag_.carryOn(lefts);
  // A drop brings another row first, which may need the width.
  if (!guest_) QMetaObject::invokeMethod(this, &DockView::letGuestGo, Qt::QueuedConnection);
}

void DockView::letGuestGo() {
  if (guest_ || !wider_) return;
  wider_.reset();
  Q_EMIT widthWanted();
}

void DockView::relayout() {
  const QList<RowItem> before = tiles_.layout().items;
  drag_.setRatio(tiles_.ratio());
  tabs_.setRatio(tiles_.ratio());
  tiles_.lay(layoutOf(row()));
  scroll_.clamp();
  focus_.clamp();
  press_.clamp();
  update();
  hover_.update();
  const bool isRearranged = before != tiles_.layout().items;
  if (shape_.takeLayout(isRearranged)) Q_EMIT shapeChanged();
  if (isRearranged) Q_EMIT itemsPlaced();
  updateTip();
}

QRect DockView::besideApplication(quint64 application) const {
  const QRectF place = tiles_.applicationPlaces().value(application);
  return place.isEmpty() ? QRect() : shape_.beside(place);
}

void DockView::showNumbers(const QSet<int>& apps) {
  if (apps == numbers_) return;
  numbers_ = apps;
  update();
}

// --- What is to be painted anew -------------------------------------------------------------------------------------

void DockView::updateItem(qsizetype item) {
  if (tiles_.isItem(item)) update(items_.boundsOf(item).toAlignedRect());
}

void DockView::updateRow() {
  if (shape_.takeWhole()) Q_EMIT shapeChanged();
  if (drag_.isBusy() || drop_.isActive() || tabs_.slide()) {
    update(shape_.rowBand().toAlignedRect());
    return;
  }
  for (qsizetype item = 0; item < tiles_.count(); ++item)
    update(items_.mostBoundsAt(tiles_.place(item)).toAlignedRect());
}

void DockView::showMagnified(qsizetype item) {
  items_.noteMotion();
  update(items_.mostBoundsAt(items_.placeOf(item)).toAlignedRect());
}

// --- A tile that is dragged -----------------------------------------------------------------------------------------

void DockView::beginDrag(qsizetype item, QPointF at) {
  updateRow();
  drag_.begin(item, at);
  if (tiles_.layout().overflow > 0) relayout();
  setPointer(at);
  // The dock has no keyboard of its own, but Escape must reach it.
  grabKeyboard();
  Q_EMIT dragStarted();
}

void DockView::dragTo(QPointF pointer) {
  drag_.moveTo(pointer);
  updateRow();
  tellCarried();
  updateTip();
  Q_EMIT dragMoved();
}

void DockView::drop() {
  if (!drag_.isActive()) return;  // Escape was faster.
  const bool crosses = wouldCross();
  const bool removes = wouldRemove();
  const QPointF at = drag_.pointer();
  const QUuid held = row().widgets[drag_.widget()].id;
  auto move = drag_.drop();
  if (crosses) move.reset();
  tellCarried();
  releaseKeyboard();
  tips_.dismiss();
  updateRow();
  const QList<DockWidget> before = row().widgets;
  if (crosses) Q_EMIT leftForOtherDock(held, at);
  if (removes) Q_EMIT removalRequested(held);
  if (move) Q_EMIT reorderRequested(move->first, move->second);
  // Whoever refuses sends it home.
  if (row().widgets == before)
    sendHome();
  else if (move)
    scroll_.reveal(tiles_.itemWithKey(held.toString()));
}

/// Without the tile that was held the ends of the row may be others.
void DockView::sendHome() {
  if (tiles_.layout().overflow > 0) {
    const auto lefts = drag_.visibleLefts();
    relayout();
    drag_.carryOn(lefts);
  }
  drag_.settle();
}

void DockView::cancelDrag() {
  if (!drag_.isActive()) return;
  press_.forget();
  drag_.drop();
  tellCarried();
  releaseKeyboard();
  tips_.dismiss();
  updateRow();
  sendHome();
  Q_EMIT released();
}

/// Whether another dock takes the tile where it is let go of now.
bool DockView::wouldCross() const {
  return !drag_.beyond().isNull() && isOverOtherDock_ && isOverOtherDock_(drag_.pointer());
}

/// Whether letting go of the tile now takes it off the dock: far from the glass, and over no other window of ours.
bool DockView::wouldRemove() const {
  if (!drag_.isAway() || wouldCross()) return false;
  const QWidget* under = QApplication::topLevelAt(mapToGlobal(drag_.pointer().toPoint()));
  return !under || under == window() || qobject_cast<const TipBubble*>(under) ||
         qobject_cast<const CarriedTile*>(under);
}

std::optional<CarriedPicture> DockView::carried() const {
  if (drag_.beyond().isNull()) return std::nullopt;
  return CarriedPicture{items_.pictureOfHeld(), items_.heldMargins(), items_.heldPlace().toRect(),
                        theme::kTileCorner * row().scale};
}

void DockView::tellCarried() {
  const bool isCarried = !drag_.beyond().isNull();
  if (std::exchange(wasCarried_, isCarried) || isCarried) Q_EMIT carriedChanged();
}

// --- Tips -----------------------------------------------------------------------------------------------------------

/// The tip of what the pointer is over, or of what the keyboard is at where it moved last.
std::optional<DockTip> DockView::pointedTip() const {
  if (focus_.leads()) return focusedItem() >= 0 ? pointed_.of(focusedItem()) : std::nullopt;
  return hover_.pointer() ? pointed_.at(*hover_.pointer()) : std::nullopt;
}

/// Nothing is said over what is open beside the dock, or while something is done with it.
void DockView::updateTip() {
  if (wouldRemove())
    tips_.say({u"remove"_s, tr("Remove"), QRect(drag_.pointer().toPoint(), QSize(1, 1))});
  else if (isHeld() || drop_.isActive() || menuOpen_ || !panelOpen_.isNull())
    tips_.dismiss();
  else
    tips_.point(pointedTip());
}

// --- For screen readers ---------------------------------------------------------------------------------------------

void DockView::activateItem(qsizetype item) {
  if (!tiles_.answersPointer(item)) return;
  if (const DockWidget* widget = tiles_.widgetOf(item))
    Q_EMIT tileActivated(widget->id);
  else
    Q_EMIT applicationActivated(tiles_.appOf(item)->id);
}

QList<ItemCommand> DockView::itemCommands(qsizetype item) const {
  if (!commands_) return {};
  if (item < 0) return commands_(QUuid(), 0, shape_.beside(glassRect()));
  if (!tiles_.isItem(item)) return {};
  const DockWidget* widget = tiles_.widgetOf(item);
  return commands_(widget ? widget->id : QUuid(), widget ? 0 : tiles_.appOf(item)->id,
                   shape_.beside(tiles_.place(item)));
}

}  // namespace tarnwick
