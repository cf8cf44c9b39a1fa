#include "views/dock/DockPainter.h"

#include <QImage>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <utility>

#include "base/LocalFigures.h"
#include "views/theme/ClearMarks.h"
#include "views/theme/Theme.h"
#include "views/theme/Typography.h"

namespace tarnwick {

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

DockPainter::DockPainter(const DockState& state, const DockShape& shape, ItemPainter& items,
                         std::function<void()> stale)
    : state_(state), shape_(shape), items_(items) {
  QObject::connect(&picture_, &GlassPicture::made, &picture_, std::move(stale));
}

double DockPainter::tileCorner() const { return theme::kTileCorner * row().scale; }

double DockPainter::dockCorner() const { return theme::kDockCorner * row().scale; }

void DockPainter::paint(QPainter& painter, const QRegion& damaged) {
  // One rectangle after the other: within a clip of several, pictures would be blended by worker threads.
  if (damaged.rectCount() > kMostRectangles) {
    paintPart(painter, damaged.boundingRect());
    return;
  }
  for (const QRect& part : damaged) {
    painter.setClipRect(part);
    paintPart(painter, part);
  }
}

void DockPainter::paintPart(QPainter& painter, const QRect& part) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  glass_.paint(painter, layout().glass, palette().glass, theme::kDockCorner, row().scale, part);
  paintPicture(painter);
  if (!row().composited && !palette().glass.bodyTop.isValid())
    // The window is cut to what is on it, whose corners must be full for that.
    for (const QRect& cut : shape_.outline()) painter.fillRect(cut, palette().tile);
  if (state_.tiles.invites()) paintInvitation(painter);
  if (!layout().tabs.isEmpty()) paintTabs(painter);
  if (state_.tabs.slide()) paintSlide(painter);
  paintScrolled(painter, part);
  if (layout().overflow > 0) paintItems(painter, part, true);
  // Beyond the glass a window of its own shows the tile that is held.
  if (const qsizetype above = state_.drag.liftedItem(); above >= 0 && state_.drag.beyond().isNull())
    items_.paint(painter, above);
  if (!state_.numbers.isEmpty()) paintNumbers(painter);
  if (const auto index = state_.drop.insertion(); index && layout().gap.isEmpty()) paintInsertion(painter, *index);
  painter.restore();
}

void DockPainter::paintPicture(QPainter& painter) {
  const double corner = dockCorner();
  picture_.paint(painter, layout().glass, shape_.fullGlass(), row().picture, corner, state_.tiles.ratio(),
                 palette().light);
  if (!row().picture.file.isEmpty() && palette().glass.rim.isValid())
    drawInnerLine(painter, layout().glass, corner, hairline(painter), palette().glass.rim);
}

/// All of a row that fits. What goes on beyond what is seen of it fades out there, under an arrow.
void DockPainter::paintScrolled(QPainter& painter, const QRect& part) {
  if (layout().overflow <= 0) {
    paintItems(painter, part, false);
    return;
  }
  const double pixelRatio = 1 / hairline(painter);
  const QRectF band(layout().middle.left(), 0, layout().middle.width(), state_.tiles.surface().height());
  const double zone = std::round(theme::kEndFade * row().scale * pixelRatio) / pixelRatio;
  const QRectF& leftArrow = layout().mirrored ? layout().onArrow : layout().backArrow;
  const QRectF& rightArrow = layout().mirrored ? layout().backArrow : layout().onArrow;
  const double left = leftArrow.isEmpty() ? 0 : zone;
  const double right = rightArrow.isEmpty() ? 0 : zone;
  painter.save();
  painter.setClipRect(band.adjusted(left, 0, -right, 0), Qt::IntersectClip);
  paintItems(painter, part, false);
  painter.restore();
  for (const bool leftEnd : {true, false}) {
    if ((leftEnd ? left : right) == 0) continue;
    const QRectF side(leftEnd ? band.left() : band.right() - right, shape_.rowBand().top(), zone,
                      shape_.rowBand().height());
    if (!side.intersects(part)) continue;
    paintFaded(painter, side, leftEnd);
    paintArrow(painter, leftEnd ? leftArrow : rightArrow, leftEnd);
  }
}

void DockPainter::paintFaded(QPainter& painter, const QRectF& side, bool towardsLeft) {
  const double pixelRatio = 1 / hairline(painter);
  QImage picture((side.size() * pixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
  picture.setDevicePixelRatio(pixelRatio);
  picture.fill(Qt::transparent);
  QPainter layer(&picture);
  layer.setRenderHint(QPainter::Antialiasing);
  layer.translate(-side.topLeft());
  paintItems(layer, side.toAlignedRect(), false);
  layer.end();
  picture.setDevicePixelRatio(1);
  fadeOut(picture, towardsLeft);
  picture.setDevicePixelRatio(pixelRatio);
  painter.drawImage(side.topLeft(), picture);
}

void DockPainter::paintArrow(QPainter& painter, const QRectF& arrow, bool pointsLeft) const {
  const double scale = row().scale;
  const auto& pointer = state_.hover.pointer();
  const bool isPointedAt = pointer && arrow.contains(*pointer);
  QRectF plate(QPointF(), QSizeF(theme::kScrollPlateWidth, theme::kScrollPlateHeight) * scale);
  plate.moveCenter(arrow.center());
  drawRounded(painter, plate, theme::kButtonCorner * scale, palette().tileDragged);
  drawInnerLine(painter, plate, theme::kButtonCorner * scale, hairline(painter), palette().separator);
  const QPointF tip = arrow.center() + QPointF((pointsLeft ? -0.5 : 0.5) * theme::kScrollArrow * scale, 0);
  const QPointF arm((pointsLeft ? 1 : -1) * theme::kScrollArrow * scale, theme::kScrollArrow * scale);
  painter.save();
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(isPointedAt ? palette().primary : palette().secondary, theme::kScrollArrowStroke * scale,
                      Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolyline(QPolygonF({tip + arm, tip, tip + QPointF(arm.x(), -arm.y())}));
  painter.restore();
}

/// The line beside the running applications and the place that is kept for a tile that is held.
void DockPainter::paintMarks(QPainter& painter, bool staying) const {
  const auto isHere = [&](const QRectF& mark) {
    const QRectF& middle = layout().middle;
    const double x = mark.center().x();
    return layout().overflow <= 0 || staying != (x >= middle.left() && x < middle.right());
  };
  if (const QRectF& line = layout().separator; !line.isEmpty() && layout().separatorStays == staying)
    ClearMarks::drawLine(painter, line, palette().hairline, palette());
  if (state_.drag.isActive() && isHere(state_.drag.gap()))
    ClearMarks::drawGap(painter, state_.drag.gap(), tileCorner(), palette());
  if (!layout().gap.isEmpty() && isHere(layout().gap))
    ClearMarks::drawGap(painter, layout().gap, tileCorner(), palette());
}

void DockPainter::paintItems(QPainter& painter, const QRect& part, bool staying) {
  painter.save();
  paintMarks(painter, staying);
  const auto& slide = state_.tabs.slide();
  const double shown = slide ? 1 - std::abs(state_.tabs.offset() / slide->from) : 1;
  const auto paint = [&](qsizetype item) {
    painter.save();
    if (isWidget(item)) clipSlide(painter);
    painter.setOpacity(isWidget(item) ? shown : 1);
    items_.paint(painter, item);
    painter.restore();
  };
  // The tile under the pointer is larger than its place and lies above its neighbours; one that is dragged above all.
  const qsizetype above = state_.drag.liftedItem();
  const qsizetype hovered = state_.hover.item();
  for (qsizetype item = 0; item < layout().items.size(); ++item) {
    if (item == hovered || above == item || layout().items[item].stays != staying) continue;
    if (part.intersects(items_.mostBoundsAt(items_.placeOf(item)).toAlignedRect())) paint(item);
  }
  if (hovered >= 0 && hovered != above && layout().items[hovered].stays == staying) {
    painter.setOpacity(isWidget(hovered) ? shown : 1);
    items_.paint(painter, hovered);
  }
  painter.restore();
}

/// The number of an app's key, on a plate in the middle of its tile.
void DockPainter::paintNumbers(QPainter& painter) const {
  const double scale = row().scale;
  int app = -1;
  for (qsizetype item = 0; item < layout().items.size(); ++item) {
    if (!state_.tiles.isApplication(item) || !state_.numbers.contains(++app)) continue;
    const QPointF centre = state_.tiles.place(item).center();
    if (!state_.tiles.seenPlace(item).contains(centre)) continue;
    const TextLine line(LocalFigures::number(app + 1), TextStyle::Title, scale);
    const double side = std::max(theme::kAppNumber, line.pixelSize() + theme::kInset / 2) * scale;
    const QRectF plate(centre - QPointF(side, side) / 2, QSizeF(side, side));
    drawRounded(painter, plate, theme::kButtonCorner * scale, palette().tileDragged);
    drawInnerLine(painter, plate, theme::kButtonCorner * scale, hairline(painter), palette().separator);
    painter.save();
    painter.translate(centre);
    painter.scale(scale, scale);
    line.drawCentred(painter, {0, line.capHeight() / 2}, palette().primary);
    painter.restore();
  }
}

/// Keeps what slides within the glass and off the running applications, which stand still.
void DockPainter::clipSlide(QPainter& painter) const {
  if (state_.tabs.offset() == 0) return;
  QPainterPath inside;
  inside.addRoundedRect(layout().glass, dockCorner(), dockCorner());
  painter.setClipPath(inside, Qt::IntersectClip);
  if (layout().overflow > 0 || row().runningApps.isEmpty() || layout().separator.isEmpty()) return;
  QRectF free = layout().glass;
  const auto isApp = [](const RowItem& item) { return item.kind == RowItem::Kind::App; };
  if (!layout().invitation.isEmpty())
    layout().invitation.left() > layout().separator.left() ? free.setLeft(layout().separator.right())
                                                           : free.setRight(layout().separator.left());
  else if (isApp(layout().mirrored ? layout().items.last() : layout().items.first()))
    free.setLeft(layout().separator.right());
  else if (isApp(layout().mirrored ? layout().items.first() : layout().items.last()))
    free.setRight(layout().separator.left());
  painter.setClipRect(free.adjusted(0, -layout().glass.height(), 0, layout().glass.height()), Qt::IntersectClip);
}

void DockPainter::paintSlide(QPainter& painter) const {
  painter.save();
  clipSlide(painter);
  const RowSlide& slide = *state_.tabs.slide();
  const double at = state_.tabs.offset();
  const QSizeF size = QSizeF(slide.old.size()) / slide.old.devicePixelRatio();
  const double shift = row().reduceMotion ? 0 : slide.oldStart + at - slide.from;
  painter.setOpacity(std::abs(at / slide.from));
  painter.drawPixmap(QPointF(std::round(layout().glass.center().x() - size.width() / 2 + shift), 0), slide.old);
  painter.restore();
}

QPixmap DockPainter::pictureOfRow() {
  QPixmap picture((QSizeF(layout().glass.width(), state_.tiles.surface().height()) * state_.tiles.ratio()).toSize());
  picture.setDevicePixelRatio(state_.tiles.ratio());
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(-layout().glass.left() - state_.tabs.offset(), 0);
  const QRectF middle = layout().middle.translated(state_.tabs.offset(), 0);
  for (qsizetype item = 0; item < layout().items.size(); ++item) {
    if (!isWidget(item)) continue;
    painter.save();
    if (layout().overflow > 0 && !layout().items[item].stays)
      painter.setClipRect(QRectF(middle.left(), 0, middle.width(), state_.tiles.surface().height()));
    items_.paint(painter, item);
    painter.restore();
  }
  return picture;
}

void DockPainter::paintInvitation(QPainter& painter) const {
  const TextLine line = RowLayout::invitationLine(row().scale);
  const QRectF ground = shape_.invitation();
  const QPointF centre = ground.center();
  // An empty dock is one button.
  const auto& pointer = state_.hover.pointer();
  if (pointer && (state_.tiles.isEmpty() ? layout().glass : ground).contains(*pointer))
    drawRounded(painter, ground, tileCorner(), state_.press.isActive() ? palette().tilePressed : palette().tileHover);
  else
    ClearMarks::drawGround(painter, ground, tileCorner(), palette());
  // The glass of an empty dock is equally wide at every scale.
  const double scale = std::min(row().scale, (ground.width() - theme::kInset) / line.width());
  painter.save();
  painter.translate(centre);
  painter.scale(scale, scale);
  line.drawCentred(painter, {0, line.capHeight() / 2}, palette().primary);
  painter.restore();
}

void DockPainter::paintTabs(QPainter& painter) const {
  const double scale = row().scale;
  painter.save();
  painter.setClipRect(layout().glass, Qt::IntersectClip);
  painter.setOpacity(state_.tabs.share());
  for (qsizetype i = 0; i < layout().tabs.size(); ++i) {
    const QRectF& tab = layout().tabs[i];
    if (tab.isEmpty()) continue;
    const bool active = i == row().activeTab;
    ClearMarks::drawGround(painter, tab, tab.height() / 2, palette());
    if (active) drawRounded(painter, tab, tab.height() / 2, palette().tab);
    painter.save();
    painter.translate(tab.center());
    painter.scale(scale, scale);
    const TextLine line =
        TextLine(row().tabs[i], TextStyle::TabLabel, scale).elided(state_.tabs.nameWidth(i), Elide::End);
    line.drawCentred(painter, {0, line.capHeight() / 2}, active ? palette().primary : palette().secondary);
    painter.restore();
  }
  painter.restore();
}

void DockPainter::paintInsertion(QPainter& painter, qsizetype index) const {
  const double scale = row().scale;
  const double x = layout().insertionX(index, row().spacing * scale);
  const double middle = layout().items.isEmpty() ? layout().glass.center().y() : layout().items[0].rect.center().y();
  const QRectF mark(std::round(x - theme::kInsertionWidth * scale / 2), middle - theme::kInsertionHeight * scale / 2,
                    std::max(2.0, std::round(theme::kInsertionWidth * scale)), theme::kInsertionHeight * scale);
  drawRounded(painter, mark, mark.width() / 2, palette().accent(Accent::Blue));
}

}  // namespace tarnwick
