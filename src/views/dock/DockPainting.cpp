#include <QCoreApplication>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "views/dock/DockView.h"
#include "views/theme/Theme.h"
#include "views/theme/Typography.h"

namespace tarnwick {

namespace {

constexpr int kMostRectangles = 12;

TextLine addWidgetsLine(double scale) {
  return TextLine(QCoreApplication::translate("Dock", "Add Widgets…"), TextStyle::Body, scale);
}

void paintDot(QPainter& painter, QPointF centre, double scale, const QColor& color, const QColor& ring) {
  const double radius = theme::kAppDotRadius * scale;
  painter.setPen(Qt::NoPen);
  if (ring.isValid()) {
    painter.setBrush(ring);
    painter.drawEllipse(centre, radius + scale, radius + scale);
  }
  painter.setBrush(color);
  painter.drawEllipse(centre, radius, radius);
}

}  // namespace

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
  if (row_.widgets.isEmpty() && layout_.items.isEmpty()) paintEmpty(painter);
  if (!layout_.tabs.isEmpty()) paintTabs(painter);
  if (layout_.overflow > 0) {
    QPainterPath inside;
    inside.addRoundedRect(layout_.glass, theme::kDockCorner * row_.scale, theme::kDockCorner * row_.scale);
    painter.setClipPath(inside, Qt::IntersectClip);
  }
  if (!layout_.separator.isEmpty()) painter.fillRect(layout_.separator, palette_.hairline);
  if (!row_.composited && !palette_.glass.bodyTop.isValid())
    // The window is cut to its tiles, whose corners must be full for that.
    for (const RowItem& item : layout_.items) painter.fillRect(item.rect.toAlignedRect(), palette_.tile);
  // The tile under the pointer is larger than its place and lies above its neighbours.
  for (qsizetype item = 0; item < layout_.items.size(); ++item) {
    const QRectF bounds = tilePaintBounds(layout_.items[item].rect, styleOf(item));
    if (item != hovered_ && part.intersects(bounds.toAlignedRect())) paintItem(painter, item);
  }
  if (hovered_ >= 0) paintItem(painter, hovered_);
  painter.restore();
}

void DockView::paintEmpty(QPainter& painter) {
  const TextLine line = addWidgetsLine(row_.scale);
  const QPointF centre = layout_.glass.center();
  painter.save();
  painter.translate(centre);
  painter.scale(row_.scale, row_.scale);
  line.drawCentred(painter, {0, line.capHeight() / 2}, palette_.primary);
  painter.restore();
}

void DockView::paintTabs(QPainter& painter) {
  const double scale = row_.scale;
  for (qsizetype i = 0; i < layout_.tabs.size(); ++i) {
    const QRectF& tab = layout_.tabs[i];
    const bool active = i == row_.activeTab;
    if (active) drawRounded(painter, tab, tab.height() / 2, palette_.tab);
    painter.save();
    painter.translate(tab.center());
    painter.scale(scale, scale);
    const TextLine line(row_.tabs[i], TextStyle::TabLabel, scale);
    line.drawCentred(painter, {0, line.capHeight() / 2}, active ? palette_.primary : palette_.secondary);
    painter.restore();
  }
}

void DockView::paintItem(QPainter& painter, qsizetype item) {
  if (const DockWidget* widget = widgetOf(item))
    paintTile(painter, layout_.items[item].rect, tiles_.constFind(widget->id)->content, styleOf(item));
  else
    paintApp(painter, item);
}

void DockView::paintApp(QPainter& painter, qsizetype item) {
  const DockApp& app = row_.runningApps[layout_.items[item].index];
  const QRectF& slot = layout_.items[item].rect;
  const double scale = row_.scale;
  const double ratio = 1 / hairline(painter);
  const TileStyle style = styleOf(item);
  const auto snapped = [ratio](double length) { return std::round(length * ratio) / ratio; };
  const double size = snapped(theme::kAppIcon * scale);
  const QRectF icon(snapped(slot.left() + theme::kAppIconLeft * scale),
                    snapped(slot.top() + theme::kAppIconTop * scale), size, size);
  painter.save();
  magnify(painter, slot, style.magnification * (style.state == TileState::Pressed ? theme::kPressedScale : 1));
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const QPixmap picture = iconOf(app, static_cast<int>(std::lround(size)), ratio);
  if (!picture.isNull()) painter.drawPixmap(icon, picture, QRectF(picture.rect()));
  if (style.focused)
    drawInnerLine(painter, slot, theme::kTileCorner * scale, theme::kFocusWidth * scale, palette_.accent(Accent::Blue));
  const QColor dot = app.front ? palette_.accent(Accent::Blue) : palette_.secondary;
  paintDot(painter, {icon.center().x(), slot.top() + theme::kAppDotTop * scale}, scale, dot, palette_.dotRing);
  painter.restore();
}

}  // namespace tarnwick
