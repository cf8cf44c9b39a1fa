#include "views/theme/FilePictures.h"

#include <QPainterPath>

#include "views/theme/RoundedPath.h"
#include "views/theme/Upright.h"

namespace tarnwick {

namespace {

void fill(QPainter& painter, const QPainterPath& path, const QColor& color) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawPath(path);
}

/// The back of a folder with its tab, whose right side slopes down.
QPainterPath folderBack() {
  QPainterPath path;
  path.moveTo(2, 20);
  path.lineTo(2, 10);
  path.quadTo(2, 6, 6, 6);
  path.lineTo(15, 6);
  path.quadTo(16.6, 6, 17.5, 7.2);
  path.lineTo(19.6, 10);
  path.lineTo(34, 10);
  path.quadTo(38, 10, 38, 14);
  path.lineTo(38, 20);
  path.closeSubpath();
  return path;
}

/// A sheet with three lines of writing, turned around its foot.
void drawSheet(QPainter& painter, QPointF corner, double degrees, const QColor& paper, const QColor& ink) {
  painter.save();
  painter.translate(corner + QPointF(9, 22));
  painter.rotate(degrees);
  fill(painter, roundedPath(QRectF(-9, -22, 18, 24), 2.5), paper);
  painter.setPen(QPen(ink, 1.4, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(-5, -16), QPointF(3, -16));
  painter.drawLine(QPointF(-5, -12), QPointF(5, -12));
  painter.drawLine(QPointF(-5, -8), QPointF(4, -8));
  painter.restore();
}

}  // namespace

void drawFolder(QPainter& painter, QPointF topLeft, const PictureColors& colors) {
  painter.save();
  keepUpright(painter, topLeft.x() + kFilePicture / 2);
  painter.translate(topLeft);
  fill(painter, folderBack(), colors.folderBack);
  const QPainterPath front = roundedPath(QRectF(2, 13, 36, 22), 4);
  fill(painter, front, colors.folderFront);
  // The light on the upper edge: the front less the front a little lower.
  fill(painter, front.subtracted(front.translated(0, 0.8)), colors.folderEdge);
  painter.restore();
}

void drawDocument(QPainter& painter, QPointF topLeft, const PictureColors& colors) {
  painter.save();
  keepUpright(painter, topLeft.x() + kFilePicture / 2);
  painter.translate(topLeft);
  fill(painter, roundedPath(QRectF(7, 3, 26, 34), 3.5), colors.paper);
  painter.setPen(QPen(colors.paperInk, 1.6, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(12, 10), QPointF(23, 10));
  painter.drawLine(QPointF(12, 15), QPointF(28, 15));
  painter.drawLine(QPointF(12, 20), QPointF(26, 20));
  painter.restore();
}

void drawPapers(QPainter& painter, QPointF topLeft, const PictureColors& colors) {
  painter.save();
  keepUpright(painter, topLeft.x() + kFilePicture / 2);
  painter.translate(topLeft);
  drawSheet(painter, {4, 9}, -14, colors.paperBehind, colors.paperInk);
  drawSheet(painter, {18, 9}, 14, colors.paperBehind, colors.paperInk);
  drawSheet(painter, {11, 8}, 0, colors.paper, colors.paperInk);
  painter.restore();
}

void drawShelf(QPainter& painter, QPointF topLeft, int sheets, const PictureColors& colors) {
  painter.save();
  keepUpright(painter, topLeft.x() + kFilePicture / 2);
  painter.translate(topLeft);
  if (sheets > 1) drawSheet(painter, {2.5, 6}, -5, colors.paperBehind, colors.paperInk);
  if (sheets > 0) drawSheet(painter, {17, 4.5}, 4, colors.paper, colors.paperInk);
  QPainterPath tray;
  tray.moveTo(-5, 22.5);
  tray.lineTo(45, 22.5);
  tray.lineTo(42.8, 34.5);
  tray.quadTo(42.2, 38, 39, 38);
  tray.lineTo(1, 38);
  tray.quadTo(-2.2, 38, -2.8, 34.5);
  tray.closeSubpath();
  fill(painter, tray, colors.tray);
  QPainterPath edge;
  edge.addRect(QRectF(-5, 22.5, 50, 2));
  fill(painter, edge.intersected(tray), colors.trayEdge);
  painter.restore();
}

}  // namespace tarnwick
