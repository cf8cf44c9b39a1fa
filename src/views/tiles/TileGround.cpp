#include "views/tiles/TileGround.h"

#include <QImage>
#include <QList>
#include <algorithm>
#include <cmath>

#include "views/theme/Glass.h"

namespace tarnwick {

namespace {

constexpr int kStrip = 64;             ///< Device pixels of the middle that are kept.
constexpr qsizetype kMostPanes = 6;    ///< At rest, under the pointer, pressed, with a panel: for one dock or two.
constexpr double kOnThePixel = 0.001;  ///< What lies so close to a whole device pixel is on it.

/// Everything in device pixels.
struct Pane {
  int height = 0;
  double corner = 0;
  QColor fill;
  QColor edge;
  QImage picture{};

  int end() const { return static_cast<int>(std::ceil(corner)) + 1; }
  bool looksLike(const Pane& other) const {
    return height == other.height && corner == other.corner && fill == other.fill && edge == other.edge;
  }
};

void paintWhole(QPainter& painter, const QRectF& rect, double corner, const QColor& fill, const QColor& edge) {
  drawRounded(painter, rect, corner, fill);
  drawInnerLine(painter, rect, corner, hairline(painter), edge);
}

const Pane& kept(Pane&& wanted) {
  static QList<Pane> panes;  // Used last, first.
  const auto found = std::ranges::find_if(panes, [&](const Pane& pane) { return pane.looksLike(wanted); });
  if (found != panes.end()) {
    std::rotate(panes.begin(), found, found + 1);
    return panes.first();
  }
  if (panes.size() == kMostPanes) panes.removeLast();
  wanted.picture = QImage(wanted.end() * 2 + kStrip, wanted.height, QImage::Format_ARGB32_Premultiplied);
  wanted.picture.fill(Qt::transparent);
  QPainter painter(&wanted.picture);
  painter.setRenderHint(QPainter::Antialiasing);
  paintWhole(painter, wanted.picture.rect(), wanted.corner, wanted.fill, wanted.edge);
  painter.end();
  panes.prepend(std::move(wanted));
  return panes.first();
}

void layDown(QPainter& painter, const QRect& rect, const Pane& pane) {
  const int end = pane.end();
  const auto piece = [&](int x, int source, int width) {
    painter.drawImage(QPoint(x, rect.top()), pane.picture, QRect(source, 0, width, rect.height()));
  };
  const int rightEnd = rect.right() + 1 - end;
  piece(rect.left(), 0, end);
  for (int x = rect.left() + end; x < rightEnd; x += kStrip) piece(x, end, std::min(kStrip, rightEnd - x));
  piece(rightEnd, end + kStrip, end);
}

}  // namespace

void TileGround::paint(QPainter& painter, const QRectF& rect, double corner, const QColor& fill, const QColor& edge) {
  const QTransform& transform = painter.deviceTransform();
  const QRectF device = transform.mapRect(rect);
  const QRect whole = device.toRect();
  const auto lies = [](double a, double b) { return std::abs(a - b) < kOnThePixel; };
  const bool onPixels = transform.type() <= QTransform::TxScale && lies(device.left(), whole.left()) &&
                        lies(device.top(), whole.top()) && lies(device.width(), whole.width()) &&
                        lies(device.height(), whole.height());
  const Pane wanted{whole.height(), corner * transform.m11(), fill, edge};
  if (!onPixels || wanted.end() * 2 > whole.width()) {
    paintWhole(painter, rect, corner, fill, edge);
    return;
  }
  painter.save();
  painter.setTransform(transform.inverted() * painter.transform());
  layDown(painter, whole, kept(Pane(wanted)));
  painter.restore();
}

}  // namespace tarnwick
