#include <QCoreApplication>
#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "views/dock/DockView.h"
#include "views/families/Rooms.h"
#include "views/theme/ClearMarks.h"
#include "views/theme/IconStyle.h"
#include "views/theme/Theme.h"
#include "views/theme/Typography.h"
#include "views/tiles/AppPainting.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kMostRectangles = 12;

/// Takes a picture back towards one of its sides, column by column.
void fadeOut(QImage& picture, bool towardsLeft) {
  QPainter painter(&picture);
  painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
  for (int x = 0; x < picture.width(); ++x) {
    const double share = (x + 0.5) / picture.width();
    const double t = towardsLeft ? share : 1 - share;
    QColor kept(Qt::black);
    kept.setAlphaF(static_cast<float>(t * t * (3 - 2 * t)));
    painter.fillRect(x, 0, 1, picture.height(), kept);
  }
}

}  // namespace

// --- Styles ---------------------------------------------------------------------------------------------------------

TileStyle DockView::styleOf(qsizetype item) const {
  TileStyle style;
  style.palette = palette_;
  style.scale = row_.scale;
  style.direction = layoutDirection();
  style.magnification = magnifier_.of(item);
  style.focused = item == focusedItem();
  style.takesDrop = drop_ && drop_->item == item;
  style.editing = drag_.isActive();
  style.icons = &tileIcons_;
  // Where the dock itself is clear, the tiles' grounds are all that text can be read on.
  style.filled = row_.tiles || row_.style == DockStyle::LiquidGlass || row_.style == DockStyle::Transparent;
  const DockWidget* widget = widgetOf(item);
  if (widget) style.accent = tileAccent(Catalog::find(widget->kind));
  if (const auto tile = widget ? tiles_.constFind(widget->id) : tiles_.constEnd(); tile != tiles_.constEnd())
    style.failed = !tile->text.problem.isEmpty();
  if (drag_.isLifted(item)) {
    style.state = TileState::Dragged;
    style.lift = drag_.lift();
    style.magnification = 1;
  } else if (item == pressed_ && item == hovered_) {
    style.state = TileState::Pressed;
  } else if (widget && !panelOpen_.isNull() && widget->id == panelOpen_) {
    style.state = TileState::PanelOpen;
  } else if (item == hovered_) {
    style.state = TileState::Hover;
  }
  if (isLaunching(item)) style.iconOpacity = launches_.value();
  return style;
}

QRectF DockView::visibleRect(qsizetype item) const {
  const QRectF& place = layout_.items[item].rect;
  const double shift = drag_.shiftOf(item) + (drag_.holds(item) ? 0 : slideOf(item));
  return place.translated(std::round(shift * ratio()) / ratio(), 0);
}

double DockView::slideOf(qsizetype item) const {
  // Running applications belong to no profile.
  return !widgetOf(item) || (row_.reduceMotion && tabs_.slide()) ? 0 : tabs_.offset();
}

void DockView::updateItem(qsizetype item) {
  if (item < 0 || item >= layout_.items.size()) return;
  update(tilePaintBounds(visibleRect(item), styleOf(item)).toAlignedRect());
}

void DockView::updateRow() {
  reportWhetherWhole();
  if (drag_.isBusy() || drop_ || tabs_.slide()) {
    update(rowBand().toAlignedRect());
    return;
  }
  for (qsizetype item = 0; item < layout_.items.size(); ++item) {
    TileStyle largest;
    largest.magnification = largestScale();
    update(tilePaintBounds(layout_.items[item].rect, largest).toAlignedRect());
  }
}

/// Everything that tiles reach, lifted ones included.
QRectF DockView::rowBand() const {
  const double room = (theme::kDraggedLift + 16) * row_.scale;
  return layout_.glass.adjusted(-room, -room, room, room) & QRectF(rect());
}

bool DockView::isLaunching(qsizetype item) const {
  if (const DockApp* app = appOf(item)) return app->launching;
  const TileContent* content = contentOf(item);
  return content && content->application().isLaunching;
}

void DockView::followLaunches() {
  bool launching = false;
  for (qsizetype item = 0; item < layout_.items.size() && !launching; ++item) launching = isLaunching(item);
  if (!launching)
    launches_.stop();
  else if (!row_.reduceMotion && isVisible())
    launches_.start();
}

// --- Painting -------------------------------------------------------------------------------------------------------

void DockView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  // One rectangle after the other: within a clip of several, pictures would be blended by worker threads.
  const QRegion& damaged = event->region();
  if (damaged.rectCount() > kMostRectangles) {
    paintPart(painter, damaged.boundingRect());
    return;
  }
  for (const QRect& part : damaged) {
    painter.setClipRect(part);
    paintPart(painter, part);
  }
}

void DockView::paintPart(QPainter& painter, const QRect& part) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  glass_.paint(painter, layout_.glass, palette_.glass, theme::kDockCorner, row_.scale, part);
  paintPicture(painter);
  if (!row_.composited && !palette_.glass.bodyTop.isValid())
    // The window is cut to what is on it, whose corners must be full for that.
    for (const QRect& cut : outlineRegion()) painter.fillRect(cut, palette_.tile);
  if (invites()) paintInvitation(painter);
  if (!layout_.tabs.isEmpty()) paintTabs(painter);
  if (layout_.overflow > 0)
    paintItemsThatEnd(painter, part);
  else
    paintItems(painter, part);
  if (drop_ && drop_->item < 0) paintInsertion(painter);
  painter.restore();
}

void DockView::paintPicture(QPainter& painter) {
  const double corner = theme::kDockCorner * row_.scale;
  picture_.paint(painter, layout_.glass, fullGlass(), row_.picture, corner, ratio(), palette_.light);
  if (!row_.picture.file.isEmpty() && palette_.glass.rim.isValid())
    drawInnerLine(painter, layout_.glass, corner, hairline(painter), palette_.glass.rim);
}

/// A row that goes on beyond its glass fades out where it does.
void DockView::paintItemsThatEnd(QPainter& painter, const QRect& part) {
  const double pixelRatio = 1 / hairline(painter);
  const QRectF band(layout_.glass.left(), 0, layout_.glass.width(), height());
  const double zone = std::round(theme::kEndFade * row_.scale * pixelRatio) / pixelRatio;
  const double begin = scroll_ > 0 ? zone : 0;
  const double end = scroll_ < layout_.overflow ? zone : 0;
  const double left = layout_.mirrored ? end : begin;
  const double right = layout_.mirrored ? begin : end;
  painter.save();
  painter.setClipRect(band.adjusted(left, 0, -right, 0), Qt::IntersectClip);
  paintItems(painter, part);
  painter.restore();
  for (const bool leftEnd : {true, false}) {
    if ((leftEnd ? left : right) == 0) continue;
    const QRectF side(leftEnd ? band.left() : band.right() - right, rowBand().top(), zone, rowBand().height());
    if (!side.intersects(part)) continue;
    QImage picture((side.size() * pixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(pixelRatio);
    picture.fill(Qt::transparent);
    QPainter layer(&picture);
    layer.setRenderHint(QPainter::Antialiasing);
    layer.translate(-side.topLeft());
    paintItems(layer, side.toAlignedRect());
    layer.end();
    picture.setDevicePixelRatio(1);
    fadeOut(picture, leftEnd);
    picture.setDevicePixelRatio(pixelRatio);
    painter.drawImage(side.topLeft(), picture);
  }
}

void DockView::paintItems(QPainter& painter, const QRect& part) {
  painter.save();
  if (!layout_.separator.isEmpty()) ClearMarks::drawLine(painter, layout_.separator, palette_.hairline, palette_);
  const auto& slide = tabs_.slide();
  if (slide) paintSlide(painter);
  const double shown = slide ? 1 - std::abs(tabs_.offset() / slide->from) : 1;
  if (drag_.isActive()) ClearMarks::drawGap(painter, drag_.gap(), theme::kTileCorner * row_.scale, palette_);
  // The tile under the pointer is larger than its place and lies above its neighbours; one that is dragged above all.
  const qsizetype above = drag_.liftedItem();
  TileStyle largest;
  largest.magnification = largestScale();
  for (qsizetype item = 0; item < layout_.items.size(); ++item) {
    if (item == hovered_ || above == item) continue;
    if (!part.intersects(tilePaintBounds(visibleRect(item), largest).toAlignedRect())) continue;
    painter.save();
    if (widgetOf(item)) clipSlide(painter);
    painter.setOpacity(widgetOf(item) ? shown : 1);
    paintItem(painter, item);
    painter.restore();
  }
  if (hovered_ >= 0 && hovered_ != above) {
    painter.setOpacity(widgetOf(hovered_) ? shown : 1);
    paintItem(painter, hovered_);
  }
  painter.restore();
  if (above >= 0) paintItem(painter, above);
}

/// Keeps what slides within the glass and off the running applications, which stand still.
void DockView::clipSlide(QPainter& painter) {
  if (tabs_.offset() == 0 || layout_.overflow > 0) return;
  QPainterPath inside;
  inside.addRoundedRect(layout_.glass, theme::kDockCorner * row_.scale, theme::kDockCorner * row_.scale);
  painter.setClipPath(inside, Qt::IntersectClip);
  if (row_.runningApps.isEmpty() || layout_.separator.isEmpty()) return;
  QRectF free = layout_.glass;
  const auto isApp = [](const RowItem& item) { return item.kind == RowItem::Kind::App; };
  if (!layout_.invitation.isEmpty())
    layout_.invitation.left() > layout_.separator.left() ? free.setLeft(layout_.separator.right())
                                                         : free.setRight(layout_.separator.left());
  else if (isApp(layout_.mirrored ? layout_.items.last() : layout_.items.first()))
    free.setLeft(layout_.separator.right());
  else if (isApp(layout_.mirrored ? layout_.items.first() : layout_.items.last()))
    free.setRight(layout_.separator.left());
  painter.setClipRect(free.adjusted(0, -layout_.glass.height(), 0, layout_.glass.height()), Qt::IntersectClip);
}

void DockView::paintSlide(QPainter& painter) {
  painter.save();
  clipSlide(painter);
  const RowSlide& slide = *tabs_.slide();
  const double at = tabs_.offset();
  const QSizeF size = QSizeF(slide.old.size()) / slide.old.devicePixelRatio();
  const double shift = row_.reduceMotion ? 0 : slide.oldStart + at - slide.from;
  painter.setOpacity(std::abs(at / slide.from));
  painter.drawPixmap(QPointF(std::round(layout_.glass.center().x() - size.width() / 2 + shift), 0), slide.old);
  painter.restore();
}

/// The tiles of the profile as they are, without glass and applications.
QPixmap DockView::pictureOfRow() {
  QPixmap picture((QSizeF(layout_.glass.width(), height()) * ratio()).toSize());
  picture.setDevicePixelRatio(ratio());
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(-layout_.glass.left() - tabs_.offset(), 0);
  for (qsizetype item = 0; item < layout_.items.size(); ++item)
    if (widgetOf(item)) paintItem(painter, item);
  return picture;
}

QRectF DockView::invitationGround() const {
  if (!layout_.invitation.isEmpty()) return layout_.invitation;
  const double inset = theme::kInset / 2 * row_.scale;  // The words reach closer to the edge than tiles do.
  return layout_.glass.adjusted(inset, inset, -inset, -inset);
}

void DockView::paintInvitation(QPainter& painter) {
  const TextLine line = RowLayout::invitationLine(row_.scale);
  const QRectF ground = invitationGround();
  const QPointF centre = ground.center();
  // An empty dock is one button.
  if (pointer_ && (isEmpty() ? layout_.glass : ground).contains(*pointer_))
    drawRounded(painter, ground, theme::kTileCorner * row_.scale, press_ ? palette_.tilePressed : palette_.tileHover);
  else
    ClearMarks::drawGround(painter, ground, theme::kTileCorner * row_.scale, palette_);
  // The glass of an empty dock is equally wide at every scale.
  const double scale = std::min(row_.scale, (ground.width() - theme::kInset) / line.width());
  painter.save();
  painter.translate(centre);
  painter.scale(scale, scale);
  line.drawCentred(painter, {0, line.capHeight() / 2}, palette_.primary);
  painter.restore();
}

void DockView::paintTabs(QPainter& painter) {
  const double scale = row_.scale;
  painter.save();
  painter.setClipRect(layout_.glass, Qt::IntersectClip);
  painter.setOpacity(tabs_.share());
  for (qsizetype i = 0; i < layout_.tabs.size(); ++i) {
    const QRectF& tab = layout_.tabs[i];
    if (tab.isEmpty()) continue;
    const bool active = i == row_.activeTab;
    ClearMarks::drawGround(painter, tab, tab.height() / 2, palette_);
    if (active) drawRounded(painter, tab, tab.height() / 2, palette_.tab);
    painter.save();
    painter.translate(tab.center());
    painter.scale(scale, scale);
    const TextLine line = TextLine(row_.tabs[i], TextStyle::TabLabel, scale).elided(tabs_.room(i), Elide::End);
    line.drawCentred(painter, {0, line.capHeight() / 2}, active ? palette_.primary : palette_.secondary);
    painter.restore();
  }
  painter.restore();
}

void DockView::paintInsertion(QPainter& painter) {
  const double scale = row_.scale;
  const double x = layout_.insertionX(drop_->index, row_.spacing * scale);
  const double middle = layout_.items.isEmpty() ? layout_.glass.center().y() : layout_.items[0].rect.center().y();
  const QRectF mark(std::round(x - theme::kInsertionWidth * scale / 2), middle - theme::kInsertionHeight * scale / 2,
                    std::max(2.0, std::round(theme::kInsertionWidth * scale)), theme::kInsertionHeight * scale);
  drawRounded(painter, mark, mark.width() / 2, palette_.accent(Accent::Blue));
}

void DockView::paintItem(QPainter& painter, qsizetype item) {
  const TileStyle style = styleOf(item);
  const QRectF place = visibleRect(item);
  if (!rest_.isMoving() || !TilePictures::hasPicture(style)) {
    paintItself(painter, item, place, style);
    return;
  }
  // The picture is taken where the tile is in the row, on whole pixels whatever shift it is drawn with.
  pictures_.draw(painter, item, place, style,
                 [&](QPainter& layer, const TileStyle& own) { paintItself(layer, item, place, own); });
}

void DockView::paintItself(QPainter& painter, qsizetype item, const QRectF& place, const TileStyle& style) {
  if (const TileContent* content = contentOf(item)) {
    paintTile(painter, place, *content, style);
  } else if (const DockApp* app = appOf(item)) {
    paintRunningApp(painter, place, app->name, app->icon, app->marks(), style);
  }
}

QPixmap DockView::iconOf(const DockApp& app, int size, double pixelRatio) {
  const IconStyle style = iconStyleNamed(row_.iconStyle, !palette_.light);
  const QString key = u"%1 %2 %3 %4"_s.arg(app.icon).arg(size).arg(pixelRatio).arg(static_cast<int>(style));
  const auto known = iconCache_.constFind(key);
  if (known != iconCache_.constEnd()) return *known;
  return *iconCache_.insert(key, icons_ ? styledIcon(icons_(app, size, pixelRatio), style) : QPixmap());
}

}  // namespace tarnwick
