#include "views/dock/ItemPainter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "views/families/Rooms.h"
#include "views/theme/Theme.h"
#include "views/tiles/AppPainting.h"
#include "views/tiles/TilePainter.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

namespace {

/// The halo of a chart comes closest to the sides of a tile.
constexpr double kHeldInset = 7;

/// The largest magnification at which what a tile `width` wide holds stays on its ground, in units at scale 1.
double mostMagnification(double width, double sideRoom) {
  const double held = width / 2 - kHeldInset;
  return held > kHeldInset ? (width / 2 + sideRoom) / held : theme::kHoverScale;
}

/// What goes to and fro is slow where it turns.
double easedWay(double share) { return share * share * (3 - 2 * share); }

}  // namespace

ItemPainter::ItemPainter(const DockState& state, const AppIconCache& icons, Animator& animator,
                         std::function<void(qsizetype item)> stale)
    : state_(state),
      icons_(icons),
      stale_(std::move(stale)),
      rest_(
          animator, theme::kRestSeconds, [] {}, [this] { comeToRest(); }),
      launches_(animator, {theme::kPulseSeconds, theme::kPulseOpacity, theme::kMostPulses},
                [this] {
                  for (qsizetype item = 0; item < state_.tiles.count(); ++item)
                    if (state_.tiles.isLaunching(item)) stale_(item);
                }),
      loading_(animator, {theme::kLoadingSeconds, 0, theme::kMostLoadings}, [this] {
        for (qsizetype item = 0; item < state_.tiles.count(); ++item)
          if (state_.tiles.isLoading(item)) stale_(item);
      }) {}

TileStyle ItemPainter::styleOf(qsizetype item) const {
  const RowTiles& tiles = state_.tiles;
  const DockRow& row = tiles.row();
  TileStyle style;
  style.palette = tiles.palette();
  style.scale = row.scale;
  style.direction = tiles.surface().layoutDirection();
  style.magnification = state_.hover.magnificationOf(item);
  style.sideRoom = 0;
  if (tiles.widgetOf(item)) {
    const double room = std::max(0.0, (row.spacing - theme::kLeastTileGap) / 2);
    style.sideRoom = room * row.scale;
    style.magnification = std::min(style.magnification, mostMagnification(tiles.place(item).width() / row.scale, room));
  }
  style.focused = item == state_.focusedItem();
  style.takesDrop = state_.drop.isOver(item);
  style.editing = state_.drag.isActive();
  style.icons = &icons_.icons();
  // Where the dock itself is clear, the tiles' grounds are all that text can be read on.
  style.filled = row.tiles || row.style == DockStyle::LiquidGlass || row.style == DockStyle::Transparent;
  style.failed = tiles.hasFailed(item);
  if (const DockWidget* widget = tiles.widgetOf(item)) style.accent = tileAccent(Catalog::find(widget->kind));
  style.state = stateOf(item);
  if (style.state == TileState::Dragged) {
    style.lift = state_.drag.lift();
    style.magnification = 1;
  }
  // Where nothing may move, an icon is as pale as at the lowest point of a beat.
  if (tiles.isLaunching(item)) style.iconOpacity = row.reduceMotion ? theme::kPulseOpacity : launches_.value();
  if (tiles.isLoading(item) && loading_.isMoving()) style.loading = easedWay(1 - loading_.value());
  return style;
}

TileState ItemPainter::stateOf(qsizetype item) const {
  const bool isHovered = item == state_.hover.item();
  if (state_.drag.isLifted(item)) return TileState::Dragged;
  if (isHovered && state_.press.isOn(item)) return TileState::Pressed;
  const DockWidget* widget = state_.tiles.widgetOf(item);
  if (widget && !state_.panelOpen.isNull() && widget->id == state_.panelOpen) return TileState::PanelOpen;
  return isHovered ? TileState::Hover : TileState::Rest;
}

QRectF ItemPainter::placeOf(qsizetype item) const {
  const RowTiles& tiles = state_.tiles;
  double shift = state_.drag.shiftOf(item);
  // Running applications belong to no profile, and reduced motion lets nothing slide.
  const bool slides = tiles.widgetOf(item) && !(tiles.row().reduceMotion && state_.tabs.slide());
  if (slides && !state_.drag.holds(item)) shift += state_.tabs.offset();
  return tiles.place(item).translated(std::round(shift * tiles.ratio()) / tiles.ratio(), 0);
}

QRectF ItemPainter::heldPlace() const {
  const double lift = std::round(theme::kDraggedLift * state_.tiles.row().scale);
  return placeOf(state_.drag.liftedItem()).translated(state_.drag.beyond() - QPointF(0, lift));
}

QMargins ItemPainter::heldMargins() const {
  const qsizetype item = state_.drag.liftedItem();
  const QRectF place = placeOf(item);
  const QRectF bounds = tilePaintBounds(place, styleOf(item));
  const auto up = [](double length) { return static_cast<int>(std::ceil(length)); };
  const double lift = std::round(theme::kDraggedLift * state_.tiles.row().scale);
  return {up(place.left() - bounds.left()), up(place.top() - lift - bounds.top()), up(bounds.right() - place.right()),
          up(bounds.bottom() - place.bottom() + lift)};
}

QPixmap ItemPainter::pictureOfHeld() const {
  const qsizetype item = state_.drag.liftedItem();
  TileStyle style = styleOf(item);
  style.lift = 1;
  const QMargins margins = heldMargins();
  const QRectF place(QPointF(margins.left(), margins.top()), state_.tiles.place(item).size());
  const QSize size = place.size().toSize().grownBy(margins);
  const double ratio = state_.tiles.ratio();
  QPixmap picture((QSizeF(size) * ratio).toSize());
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  // It is painted as far above its place as it is lifted.
  paintItself(painter, item, place.translated(0, std::round(theme::kDraggedLift * style.scale)), style);
  return picture;
}

QRectF ItemPainter::boundsOf(qsizetype item) const { return tilePaintBounds(placeOf(item), styleOf(item)); }

QRectF ItemPainter::mostBoundsAt(const QRectF& place) const {
  TileStyle largest;
  largest.magnification = std::max(theme::kHoverScale, 1 + state_.tiles.row().swelling);
  return tilePaintBounds(place, largest);
}

void ItemPainter::paint(QPainter& painter, qsizetype item) {
  const TileStyle style = styleOf(item);
  const QRectF place = placeOf(item);
  if (!rest_.isMoving() || !TilePictures::hasPicture(style)) {
    paintItself(painter, item, place, style);
    return;
  }
  // The ground is not in the picture: it grows less than what is on it.
  paintGround(painter, item, place, style);
  // The picture is taken where the tile is in the row, on whole pixels whatever shift it is drawn with.
  pictures_.draw(painter, item, place, style, [&](QPainter& layer, TileStyle own) {
    own.grounded = false;
    paintItself(layer, item, place, own);
  });
}

void ItemPainter::paintGround(QPainter& painter, qsizetype item, const QRectF& place, const TileStyle& style) const {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (const TileContent* content = state_.tiles.contentOf(item))
    paintTileGround(painter, place, *content, style);
  else if (state_.tiles.appOf(item))
    paintAppGround(painter, place, style);
  painter.restore();
}

void ItemPainter::paintItself(QPainter& painter, qsizetype item, const QRectF& place, const TileStyle& style) const {
  if (const TileContent* content = state_.tiles.contentOf(item)) {
    paintTile(painter, place, *content, style);
  } else if (const DockApp* app = state_.tiles.appOf(item)) {
    paintRunningApp(painter, place, app->name, app->icon, app->marks(), style);
  }
}

void ItemPainter::comeToRest() {
  pictures_.clear();
  for (qsizetype item = 0; item < state_.tiles.count(); ++item)
    if (tileFactor(styleOf(item)) != 1) stale_(item);
}

void ItemPainter::followLoading() {
  bool isAny = false;
  for (qsizetype item = 0; !isAny && item < state_.tiles.count(); ++item) isAny = state_.tiles.isLoading(item);
  const bool moves = isAny && !state_.tiles.row().reduceMotion && state_.tiles.surface().isVisible();
  moves ? loading_.start() : loading_.stop();
}

void ItemPainter::followLaunches() {
  QSet<QString> launching;
  for (qsizetype item = 0; item < state_.tiles.count(); ++item)
    if (state_.tiles.isLaunching(item)) launching.insert(state_.tiles.keyOf(item));
  // Another one is seen for as long as the first.
  const bool isMore = !launching_.contains(launching);
  launching_ = launching;
  if (launching.isEmpty() || isMore) launches_.stop();
  if (launching.isEmpty()) return;
  if (!state_.tiles.row().reduceMotion && state_.tiles.surface().isVisible()) launches_.start();
}

}  // namespace tarnwick
