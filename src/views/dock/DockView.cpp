#include "views/dock/DockView.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>
#include <utility>

#include "views/dock/DockAccessible.h"
#include "views/families/Rooms.h"
#include "views/theme/Theme.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// Whether two rows differ in nothing but what their tiles show.
bool looksLike(const DockRow& a, const DockRow& b) {
  if (a.widgets.size() != b.widgets.size()) return false;
  DockRow other = b;
  for (qsizetype i = 0; i < a.widgets.size(); ++i) {
    if (a.widgets[i].id != b.widgets[i].id || a.widgets[i].kind != b.widgets[i].kind) return false;
    other.widgets[i] = a.widgets[i];
  }
  return a == other;
}

bool sameOrder(const QList<DockWidget>& a, const QList<DockWidget>& b) {
  return std::ranges::equal(a, b, {}, &DockWidget::id, &DockWidget::id);
}

/// Whether two rows have no tile in common, as those of two profiles.
bool areStrangers(const QList<DockWidget>& a, const QList<DockWidget>& b) {
  if (a.isEmpty() && b.isEmpty()) return false;
  return std::ranges::none_of(
      a, [&b](const QUuid& id) { return std::ranges::find(b, id, &DockWidget::id) != b.end(); }, &DockWidget::id);
}

Palette paletteOf(const DockRow& row) {
  const Palette usual = Palette::make(row.style, row.backdrop(), row.monochrome, row.highContrast);
  Palette palette = usual;
  if (row.reduceTransparency && !row.highContrast) {
    palette = Palette::make(row.style, Backdrop::Opaque, row.monochrome, false);
    // Only the glass is opaque; the window around it is what it was.
    palette.glass.shadow = usual.glass.shadow;
    palette.glass.outline = usual.glass.outline;
    palette.panel.shadow = usual.panel.shadow;
    palette.panel.outline = usual.panel.outline;
  }
  // A picture has the shape of the glass where the style has none.
  if (!row.picture.file.isEmpty() && !palette.glass.bodyTop.isValid())
    palette.glass.bodyTop = palette.glass.bodyBottom = QColor(0, 0, 0, 1);
  if (!row.tileBorders && !row.highContrast) palette.tileEdge = QColor(Qt::transparent);
  return palette;
}

}  // namespace

DockView::DockView(QWidget* parent)
    : QWidget(parent),
      palette_(Palette::make(DockStyle::DarkGlass, Backdrop::Plain, false)),
      magnifier_(
          row_, layout_, animator_, [this](qsizetype item) { return answersPointer(item); },
          [this](qsizetype item) {
            noteMotion();
            TileStyle largest;
            largest.magnification = largestScale();
            update(tilePaintBounds(visibleRect(item), largest).toAlignedRect());
          }),
      rest_(
          animator_, theme::kRestSeconds, [] {}, [this] { comeToRest(); }),
      launches_(animator_, {theme::kPulseSeconds, theme::kPulseOpacity, theme::kMostPulses},
                [this] {
                  for (qsizetype item = 0; item < layout_.items.size(); ++item)
                    if (isLaunching(item)) updateItem(item);
                }),
      edges_(row_, layout_, animator_, [this](double units) { return scrollBy(units); }),
      drag_(row_, layout_, animator_, edges_, [this](const DockRow& row) { return layoutOf(row); }),
      tabs_(row_, layout_, animator_) {
  installDockAccessibility();
  setAttribute(Qt::WA_TranslucentBackground);
  setMouseTracking(true);
  setAcceptDrops(true);
  setFocusPolicy(Qt::TabFocus);
  setAccessibleName(QCoreApplication::translate("Dock", "Dock"));
  tileIcons_ = [this](const QString& icon, int size, double pixelRatio) {
    DockApp app;
    app.icon = icon;
    return iconOf(app, size, pixelRatio);
  };
  connect(&picture_, &GlassPicture::made, this, qOverload<>(&QWidget::update));
  connectParts();
}

void DockView::connectParts() {
  connect(&drag_, &TileDragController::moved, this, [this] {
    noteMotion();
    updateRow();
  });
  connect(&tabs_, &ProfileTabs::moved, this, [this] {
    noteMotion();
    if (tabs_.areMoving() || tabs_.share() > 0) relayout();
    update();
  });
  connect(&tabs_, &ProfileTabs::rested, this, &DockView::relayout);
  connect(&drag_, &TileDragController::landed, this, [this] {
    relayout();
    reportWhetherWhole();
  });
  connect(&tabs_, &ProfileTabs::activated, this, &DockView::tabActivated);
  connect(&tips_, &TipController::changed, this, &DockView::tipChanged);
  connect(&tabs_, &ProfileTabs::due, this, [this](bool shown) {
    showTabs(shown);
    rehover();
  });
}

DockView::~DockView() = default;

void DockView::setScheduler(Scheduler* scheduler) {
  opening_.reset();
  scheduler_ = scheduler;
  tabs_.setScheduler(scheduler);
  tips_.setScheduler(scheduler);
}

void DockView::setIconProvider(IconProvider provider) {
  icons_ = std::move(provider);
  forgetIcons();
}

void DockView::forgetIcons() {
  iconCache_.clear();
  pictures_.clear();
  update();
}

void DockView::setSwitchGuard(std::function<bool()> busy) { switchGuard_ = std::move(busy); }

void DockView::setRow(const DockRow& row) {
  if (row == row_ && !layout_.glass.isEmpty()) return;
  if (looksLike(row, row_) && !layout_.glass.isEmpty()) {
    row_ = row;
    refresh(sources_);
    return;
  }
  if (drag_.isActive() && !sameOrder(row.widgets, row_.widgets)) cancelDrag();
  const bool switches = row.activeTab != row_.activeTab && row.tabs == row_.tabs && !layout_.items.isEmpty();
  if (switches && isVisible()) tabs_.beginSlide(pictureOfRow(), tabs_.isForward(row));
  const auto lefts = drag_.visibleLefts();
  applyRow(row);
  drag_.carryOn(lefts);
  if (drag_.isActive()) dragTo(drag_.pointer());
  rehover();
}

void DockView::applyRow(const DockRow& row) {
  const QString focusKey = keyOf(focused_);
  // Another profile's row is walked from its beginning.
  const bool isAnother = areStrangers(row.widgets, row_.widgets);
  const qsizetype focusedBefore = isAnother ? -1 : focused_;
  if (isAnother) scroll_ = 0;
  row_ = row;
  palette_ = paletteOf(row);
  drag_.setReduced(row.reduceMotion);
  hovered_ = pressed_ = middlePressed_ = -1;
  wheel_.reset();
  tabs_.takeRow();
  tiles_.clear();
  pictures_.clear();
  relayout();
  refresh(sources_);
  // The keyboard stays on its tile, or on what takes the place of one that went.
  const qsizetype kept = focusKey.isEmpty() ? -1 : itemWithKey(focusKey);
  focused_ = kept >= 0 ? kept : std::min(focusedBefore, layout_.items.size() - 1);
  if (hasFocus() && (kept < 0 || kept != focusedBefore)) focusItem(std::max<qsizetype>(focused_, 0));
  reportNames();
}

void DockView::refresh(const TileSources& sources, const std::function<bool(const DockWidget&)>& which) {
  sources_ = sources;
  bool textChanged = false;
  for (qsizetype item = 0; item < layout_.items.size(); ++item) {
    const DockWidget* widget = widgetOf(item);
    if (!widget || (which && !which(*widget))) continue;
    const WidgetDefinition& definition = Catalog::find(widget->kind);
    TileContent content = makeTileContent(*widget, definition, sources);
    TileText text = content.describe(widget->title.isEmpty() ? definition.name : widget->title);
    text.problem = tileProblem(definition, sources);
    Tile& tile = tiles_[widget->id];
    textChanged = textChanged || text != tile.text;
    const bool isMarkKept = text.problem.isEmpty() == tile.text.problem.isEmpty();
    tile.text = std::move(text);
    if (content == tile.content && isMarkKept) continue;
    tile.content = std::move(content);
    pictures_.forget(item);
    updateItem(item);
  }
  if (textChanged) {
    describe();
    updateTip();
  }
  followLaunches();
}

void DockView::describe() {
  QStringList tips;
  for (const DockWidget& widget : row_.widgets)
    if (const auto tile = tiles_.constFind(widget.id); tile != tiles_.constEnd() && tile->content.isSolid())
      tips.append(tile->text.tip());
  setAccessibleDescription(tips.join(u"; "_s));
  reportNames();
}

void DockView::setPanelOpen(const QUuid& widget) {
  if (widget == panelOpen_) return;
  panelOpen_ = widget;
  holdTabs();
  updateTip();
  updateRow();
}

// --- Shapes ---------------------------------------------------------------------------------------------------------

RowLayout DockView::layoutOf(const DockRow& row) const {
  const QRectF slot = QRectF(rect()).marginsRemoved(QMarginsF(margins()));
  return RowLayout::of(row, slot, ratio(), {scroll_, tabs_.share(), isRightToLeft()});
}

void DockView::relayout() {
  const RowLayout old = layout_;
  magnifier_.setRatio(ratio());
  drag_.setRatio(ratio());
  tabs_.setRatio(ratio());
  layout_ = layoutOf(row_);
  scroll_ = std::clamp(scroll_, 0.0, layout_.overflow);
  if (focused_ >= layout_.items.size()) focused_ = -1;
  if (hovered_ >= layout_.items.size()) hovered_ = -1;
  if (pressed_ >= layout_.items.size()) pressed_ = -1;
  update();
  magnifier_.update();
  // A dock without glass has the shape of its tiles.
  const bool reshaped =
      fullGlass() != reportedGlass_ || (!palette_.glass.bodyTop.isValid() && old.items != layout_.items);
  reportedGlass_ = fullGlass();
  if (reshaped) Q_EMIT shapeChanged();
  if (old.items != layout_.items) Q_EMIT itemsPlaced();
  updateTip();
}

/// A dock without glass has the shape of what is in it. Where nothing composites that would cut what is dragged
/// over it, and the mark of where it goes.
void DockView::reportWhetherWhole() {
  if (std::exchange(reportedWhole_, isWhole()) != isWhole()) Q_EMIT shapeChanged();
}

QSize DockView::sizeHint() const {
  const double height = row_.keepsRoomForTabs() ? theme::kDockHeightWithTabs : theme::kDockHeight;
  const QMargins room = margins();
  const int width = static_cast<int>(std::ceil(idealRowWidth()));
  return QSize(width, static_cast<int>(std::ceil(height * row_.scale))).grownBy(room);
}

QMargins DockView::margins() const {
  QMargins room = Glass::margins(palette_.glass, row_.scale);
  if (!row_.composited) return {};
  const int lift = static_cast<int>(std::ceil((theme::kDraggedLift + 4) * row_.scale));
  room.setTop(std::max(room.top(), lift));
  return room;
}

QRectF DockView::fullGlass() const {
  // While the glass grows or shrinks, the shape is what it is at most.
  if (!tabs_.areMoving()) return layout_.glass;
  const double grown = theme::kDockHeightWithTabs * row_.scale - layout_.glass.height();
  return row_.edge == Edge::Bottom ? layout_.glass.adjusted(0, -grown, 0, 0) : layout_.glass.adjusted(0, 0, 0, grown);
}

QRegion DockView::outlineRegion() const {
  const double scale = row_.scale;
  if (isWhole()) return Glass::outline(fullGlass().toAlignedRect(), theme::kDockCorner * scale);
  QRegion region;
  if (invites()) region = Glass::outline(invitationGround().toAlignedRect(), theme::kTileCorner * scale);
  for (const QRectF& plate : layout_.plates(row_))
    region += Glass::outline(plate.toAlignedRect(), theme::kTileCorner * scale);
  for (const QRectF& tab : layout_.tabs) region += Glass::outline(tab.toAlignedRect(), tab.height() / 2);
  for (const QRectF& line : layout_.lines(row_, ratio())) region += line.toAlignedRect();
  return region;
}

QRegion DockView::inputRegion() const {
  return Glass::outline(fullGlass().toAlignedRect(), theme::kDockCorner * row_.scale);
}

// --- What there is --------------------------------------------------------------------------------------------------

const DockWidget* DockView::widgetOf(qsizetype item) const {
  if (item < 0 || item >= layout_.items.size() || layout_.items[item].kind != RowItem::Kind::Widget) return nullptr;
  return &row_.widgets[layout_.items[item].index];
}

const DockApp* DockView::appOf(qsizetype item) const {
  if (item < 0 || item >= layout_.items.size() || layout_.items[item].kind != RowItem::Kind::App) return nullptr;
  return &row_.runningApps[layout_.items[item].index];
}

const TileContent* DockView::contentOf(qsizetype item) const {
  const DockWidget* widget = widgetOf(item);
  if (!widget) return nullptr;
  const auto tile = tiles_.constFind(widget->id);
  return tile == tiles_.constEnd() ? nullptr : &tile->content;
}

quint64 DockView::applicationOf(qsizetype item) const {
  if (const DockApp* app = appOf(item)) return app->id;
  const TileContent* content = contentOf(item);
  return content ? content->application().identity : 0;
}

QString DockView::keyOf(qsizetype item) const { return isItem(item) ? itemKey(row_, layout_.items[item]) : QString(); }

bool DockView::answersPointer(qsizetype item) const {
  if (!isItem(item)) return false;
  const TileContent* content = contentOf(item);
  return !content || content->isSolid();
}

QUuid DockView::widgetAt(QPointF point) const {
  const DockWidget* widget = widgetOf(layout_.itemAt(point).value_or(-1));
  return widget ? widget->id : QUuid();
}

QRectF DockView::tileRect(const QUuid& widget) const {
  const auto found = std::ranges::find(row_.widgets, widget, &DockWidget::id);
  if (found == row_.widgets.end()) return {};
  return itemRect(layout_.itemOf(RowItem::Kind::Widget, found - row_.widgets.begin()));
}

QRect DockView::besideRect(const QUuid& widget) const { return glassBeside(tileRect(widget)); }

QRect DockView::glassBeside(const QRectF& item) const {
  QRectF beside = item;
  beside.setTop(fullGlass().top());
  beside.setBottom(fullGlass().bottom());
  return beside.toAlignedRect();
}

QList<DockAppItem> DockView::apps() const {
  QList<DockAppItem> apps;
  for (qsizetype item = 0; item < layout_.items.size(); ++item) {
    const DockWidget* widget = widgetOf(item);
    if (widget && DropRules::takerOf(*widget) == DropRules::Taker::Application)
      apps.append({widget->id, 0});
    else if (const DockApp* app = appOf(item))
      apps.append({{}, app->id});
  }
  return apps;
}

QRect DockView::besideApplication(quint64 application) const {
  const QRectF place = applicationPlaces().value(application);
  return place.isEmpty() ? QRect() : glassBeside(place);
}

QHash<quint64, QRectF> DockView::applicationPlaces() const {
  QHash<quint64, QRectF> places;
  for (qsizetype item = 0; item < layout_.items.size(); ++item)
    if (const quint64 application = applicationOf(item)) places.insert(application, layout_.items[item].rect);
  return places;
}

TileText DockView::itemText(qsizetype item) const {
  if (const DockWidget* widget = widgetOf(item)) return tiles_.value(widget->id).text;
  const DockApp* app = appOf(item);
  return app ? TileText{app->name, tarnwick::describe(app->marks())} : TileText{};
}

void DockView::activateItem(qsizetype item) {
  if (!answersPointer(item)) return;
  if (const DockWidget* widget = widgetOf(item))
    Q_EMIT tileActivated(widget->id);
  else
    Q_EMIT applicationActivated(appOf(item)->id);
}

}  // namespace tarnwick
