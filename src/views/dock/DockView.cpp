#include "views/dock/DockView.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "views/dock/DockAccessible.h"
#include "dock/rules/Magnification.h"
#include "views/theme/Theme.h"
#include "views/theme/Typography.h"
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

}  // namespace

DockView::DockView(QWidget* parent)
    : QWidget(parent), palette_(Palette::make(DockStyle::DarkGlass, Backdrop::Plain, false)) {
  installDockAccessibility();
  setAttribute(Qt::WA_TranslucentBackground);
  setMouseTracking(true);
  setFocusPolicy(Qt::TabFocus);
  setAccessibleName(QCoreApplication::translate("Dock", "Dock"));
  swell_.setDuration(theme::kFadeMilliseconds);
  swell_.setStartValue(0.0);
  swell_.setEndValue(1.0);
  connect(&swell_, &QVariantAnimation::valueChanged, this, [this] { updateRow(); });
}

DockView::~DockView() = default;

void DockView::setIconProvider(IconProvider provider) {
  icons_ = std::move(provider);
  iconCache_.clear();
  update();
}

void DockView::setRow(const DockRow& row) {
  if (row == row_ && !layout_.glass.isEmpty()) return;
  const bool sameLook = looksLike(row, row_) && !layout_.glass.isEmpty();
  row_ = row;
  if (sameLook) {
    refresh(sources_);
    return;
  }
  palette_ = Palette::make(row.style, row.backdrop(), row.monochrome);
  hovered_ = pressed_ = -1;
  tiles_.clear();
  relayout();
  refresh(sources_);
}

void DockView::refresh(const TileSources& sources) {
  sources_ = sources;
  bool textChanged = false;
  for (qsizetype item = 0; item < layout_.items.size(); ++item) {
    const DockWidget* widget = widgetOf(item);
    if (!widget) continue;
    const WidgetDefinition& definition = Catalog::find(widget->kind);
    TileContent content = makeTileContent(*widget, definition, sources);
    TileText text = tileText(content, widget->title.isEmpty() ? definition.name : widget->title);
    Tile& tile = tiles_[widget->id];
    textChanged = textChanged || text != tile.text;
    tile.text = std::move(text);
    if (content == tile.content) continue;
    tile.content = std::move(content);
    updateItem(item);
  }
  if (textChanged) describe();
}

void DockView::describe() {
  QStringList tips;
  for (const DockWidget& widget : row_.widgets)
    if (const auto tile = tiles_.constFind(widget.id); tile != tiles_.constEnd() && isSolid(tile->content))
      tips.append(tile->text.tip());
  setAccessibleDescription(tips.join(u"; "_s));
}

void DockView::setPanelOpen(const QUuid& widget) {
  if (widget == panelOpen_) return;
  panelOpen_ = widget;
  updateRow();
}

void DockView::relayout() {
  const RowLayout old = layout_;
  const QMargins room = margins();
  const QRectF slot = QRectF(rect()).marginsRemoved(QMarginsF(room));
  layout_ = RowLayout::of(row_, slot, devicePixelRatioF(), scroll_);
  scroll_ = std::clamp(scroll_, 0.0, layout_.overflow);
  if (focused_ >= layout_.items.size()) focused_ = -1;
  if (hovered_ >= layout_.items.size()) hovered_ = -1;
  update();
  if (old.glass != layout_.glass || old.items.size() != layout_.items.size()) Q_EMIT shapeChanged();
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

QRegion DockView::outlineRegion() const {
  const double scale = row_.scale;
  if (palette_.glass.bodyTop.isValid())
    return Glass::outline(layout_.glass.toAlignedRect(), theme::kDockCorner * scale);
  QRegion region;
  for (const RowItem& item : layout_.items)
    region += Glass::outline(item.rect.toAlignedRect(), theme::kTileCorner * scale);
  return region;
}

QRegion DockView::inputRegion() const {
  return Glass::outline(layout_.glass.toAlignedRect(), theme::kDockCorner * row_.scale);
}

const DockWidget* DockView::widgetOf(qsizetype item) const {
  if (item < 0 || item >= layout_.items.size() || layout_.items[item].kind != RowItem::Kind::Widget) return nullptr;
  return &row_.widgets[layout_.items[item].index];
}

bool DockView::answersPointer(qsizetype item) const {
  if (item < 0 || item >= layout_.items.size()) return false;
  const DockWidget* widget = widgetOf(item);
  return !widget || isSolid(tiles_.value(widget->id).content);
}

QUuid DockView::widgetAt(QPointF point) const {
  const DockWidget* widget = widgetOf(layout_.itemAt(point).value_or(-1));
  return widget ? widget->id : QUuid();
}

TileText DockView::itemText(qsizetype item) const {
  if (const DockWidget* widget = widgetOf(item)) return tiles_.value(widget->id).text;
  if (item < 0 || item >= layout_.items.size()) return {};
  return {row_.runningApps[layout_.items[item].index].name, {}};
}

void DockView::activateItem(qsizetype item) {
  if (!answersPointer(item)) return;
  if (const DockWidget* widget = widgetOf(item))
    Q_EMIT tileActivated(widget->id);
  else
    Q_EMIT applicationActivated(row_.runningApps[layout_.items[item].index].id);
}

double DockView::magnificationOf(qsizetype item) const {
  const double amount = swell_.currentValue().toDouble();
  if (row_.reduceMotion || amount <= 0 || !answersPointer(item)) return 1;
  const double centre = layout_.items[item].rect.center().x();
  return 1 + (Magnification::scale(centre / row_.scale, pointerX_ / row_.scale) - 1) * amount;
}

TileStyle DockView::styleOf(qsizetype item) const {
  TileStyle style;
  style.palette = palette_;
  style.scale = row_.scale;
  style.magnification = magnificationOf(item);
  style.focused = item == focusedItem();
  // Where the dock itself is clear, the tiles' grounds are all that text can be read on.
  style.filled = row_.tiles || row_.style == DockStyle::LiquidGlass || row_.style == DockStyle::Transparent;
  const DockWidget* widget = widgetOf(item);
  if (widget) style.accent = tileAccent(Catalog::find(widget->kind));
  if (item == pressed_ && item == hovered_)
    style.state = TileState::Pressed;
  else if (widget && !panelOpen_.isNull() && widget->id == panelOpen_)
    style.state = TileState::PanelOpen;
  else if (item == hovered_)
    style.state = TileState::Hover;
  return style;
}

void DockView::updateItem(qsizetype item) {
  if (item < 0 || item >= layout_.items.size()) return;
  update(tilePaintBounds(layout_.items[item].rect, styleOf(item)).toAlignedRect());
}

void DockView::updateRow() {
  for (qsizetype item = 0; item < layout_.items.size(); ++item) {
    TileStyle largest;
    largest.magnification = theme::kHoverScale;
    update(tilePaintBounds(layout_.items[item].rect, largest).toAlignedRect());
  }
}

QPixmap DockView::iconOf(const DockApp& app, int size, double ratio) {
  const QString key = u"%1 %2 %3"_s.arg(app.icon).arg(size).arg(ratio);
  auto& icon = iconCache_[key];
  if (icon.isNull() && icons_) icon = icons_(app, size, ratio);
  return icon;
}

}  // namespace tarnwick
