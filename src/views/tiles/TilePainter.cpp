#include "views/tiles/TilePainter.h"

#include <algorithm>
#include <cmath>

#include "views/theme/Glass.h"
#include "views/tiles/TileCanvas.h"
#include "views/tiles/TileGround.h"

namespace tarnwick {

namespace {

constexpr double kOpenBarWidth = 16;
constexpr double kOpenBarHeight = 2;
constexpr double kOpenBarTop = 61;  // Below what the lowest captions reach.
constexpr double kFailedDot = 2.5;
constexpr double kFailedInset = 9;
constexpr double kDragShadowReach = 16;

QColor groundOf(const TileStyle& style) {
  switch (style.state) {
    case TileState::Hover:
      return style.palette.tileHover;
    case TileState::Pressed:
      return style.palette.tilePressed;
    case TileState::PanelOpen:
      return style.palette.tileOpen;
    case TileState::Dragged:
      return style.palette.tileDragged;
    case TileState::Rest:
      break;
  }
  return style.filled ? style.palette.tile : QColor();
}

/// Where the ground of a tile at `place` is. Sideways it stops before it would touch what is beside it.
QRectF grownGround(const QRectF& place, const TileStyle& style) {
  const double growth = (tileFactor(style) - 1) / 2;
  if (growth == 0) return place;
  const double sideways = std::min(place.width() * growth, style.sideRoom);
  const double upwards = place.height() * growth;
  return place.adjusted(-sideways, -upwards, sideways, upwards);
}

void paintDragShadow(QPainter& painter, const QRectF& rect, double corner, double scale, const QColor& color) {
  // A few nested outlines, each a little larger and fainter: soft enough for something that moves.
  constexpr int steps = 8;
  for (int i = steps; i > 0; --i) {
    const double spread = kDragShadowReach * scale * i / steps / 2;
    drawRounded(painter, rect.translated(0, theme::kShadowOffset * scale).adjusted(-spread, -spread, spread, spread),
                corner + spread, faded(color, 1.0 / steps));
  }
}

void paintOpenBar(TileCanvas& canvas) {
  const QRectF bar((canvas.width() - kOpenBarWidth) / 2, kOpenBarTop, kOpenBarWidth, kOpenBarHeight);
  drawRounded(canvas.painter(), bar, kOpenBarHeight / 2, canvas.accent());
}

void paintFailed(TileCanvas& canvas) {
  QPainter& painter = canvas.painter();
  painter.setPen(Qt::NoPen);
  painter.setBrush(canvas.colors().accent(Accent::Red));
  painter.drawEllipse(QPointF(canvas.width() - kFailedInset, kFailedInset), kFailedDot, kFailedDot);
}

}  // namespace

void paintTileGround(QPainter& painter, const QRectF& place, const TileStyle& style) {
  const double corner = theme::kTileCorner * style.scale * tileFactor(style);
  const QRectF rect = grownGround(place, style);
  if (style.state == TileState::Dragged)
    paintDragShadow(painter, rect, corner, style.scale, faded(style.palette.dragShadow, style.lift));
  if (const QColor ground = groundOf(style); ground.isValid()) {
    TileGround::paint(painter, rect, corner, ground, style.palette.tileEdge);
  }
  if (style.takesDrop) drawRounded(painter, rect, corner, style.palette.selection);
  if (style.focused || style.takesDrop) {
    const double width = std::max(1.0, std::round(theme::kFocusWidth * style.scale));
    drawInnerLine(painter, rect, corner, width, style.palette.accent(Accent::Blue));
  }
}

void paintTileGround(QPainter& painter, const QRectF& rect, const TileContent& content, const TileStyle& style) {
  if (content.isSolid() || style.focused || style.state == TileState::Dragged) paintTileGround(painter, rect, style);
}

double tileFactor(const TileStyle& style) {
  return style.magnification * (style.state == TileState::Pressed ? theme::kPressedScale : 1);
}

void magnify(QPainter& painter, const QRectF& rect, double factor) {
  if (factor == 1) return;
  painter.translate(rect.center());
  painter.scale(factor, factor);
  painter.translate(-rect.center());
}

void enterTile(QPainter& painter, const QRectF& rect, const TileStyle& style) {
  painter.translate(rect.topLeft());
  painter.scale(style.scale, style.scale);
  if (style.direction == Qt::LeftToRight) return;
  painter.translate(rect.width() / style.scale, 0);
  painter.scale(-1, 1);
}

void paintTile(QPainter& painter, const QRectF& rect, const TileContent& content, const TileStyle& style) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (style.state == TileState::Dragged)
    painter.translate(0, -std::round(theme::kDraggedLift * style.scale * style.lift));
  if (style.grounded) paintTileGround(painter, rect, content, style);
  magnify(painter, rect, tileFactor(style));
  enterTile(painter, rect, style);
  TileCanvas canvas(painter, rect.width() / style.scale, style);
  content.paint(canvas);
  if (style.failed) paintFailed(canvas);
  if (style.state == TileState::PanelOpen) paintOpenBar(canvas);
  painter.restore();
}

QRectF tilePaintBounds(const QRectF& rect, const TileStyle& style) {
  const double factor = std::max(1.0, tileFactor(style));
  const double sideways = rect.width() * (factor - 1) / 2;
  const double upwards = rect.height() * (factor - 1) / 2;
  QRectF bounds = rect.adjusted(-sideways, -upwards, sideways, upwards);
  if (style.state == TileState::Dragged) {
    const double reach = kDragShadowReach * style.scale;
    bounds =
        bounds.united(rect.translated(0, -theme::kDraggedLift * style.scale).adjusted(-reach, -reach, reach, reach));
  }
  return bounds;
}

}  // namespace tarnwick
