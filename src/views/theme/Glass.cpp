#include "views/theme/Glass.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "views/theme/Bands.h"
#include "views/theme/Blur.h"
#include "views/theme/RoundedPath.h"
#include "views/theme/Theme.h"

namespace tarnwick {

namespace {

/// The width of the part that is repeated, in device pixels.
constexpr int kStrip = 128;

/// The shadow of `body`, in device pixels, with the place of the body itself left out, so that the glass stays clear.
void paintShadow(QPainter& painter, const QSize& size, const QRectF& body, double corner, double unit,
                 const QColor& color) {
  QImage mask(size, QImage::Format_Alpha8);
  mask.fill(0);
  QPainter caster(&mask);
  caster.setRenderHint(QPainter::Antialiasing);
  caster.fillPath(roundedPath(body.translated(0, theme::kShadowOffset * unit), corner), Qt::black);
  caster.end();
  blur(mask, theme::kShadowBlur * unit);

  QImage tinted(size, QImage::Format_ARGB32_Premultiplied);
  tinted.fill(color);
  QPainter tint(&tinted);
  tint.setCompositionMode(QPainter::CompositionMode_DestinationIn);
  tint.drawImage(0, 0, mask);
  tint.setRenderHint(QPainter::Antialiasing);
  tint.setCompositionMode(QPainter::CompositionMode_DestinationOut);
  tint.fillPath(roundedPath(body, corner), Qt::black);
  tint.end();
  painter.drawImage(0, 0, tinted);
}

/// A line that follows the roundedPath edge but shows only at the top or at the bottom, fading out around the corners.
void paintEdge(QPainter& painter, const QRectF& body, double corner, double width, const QColor& color, bool top) {
  if (!color.isValid()) return;
  const double y = top ? body.top() : body.bottom();
  QLinearGradient fade(0, y, 0, y + (top ? corner : -corner));
  fade.setColorAt(0, color);
  fade.setColorAt(1, faded(color, 0));
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QBrush(fade), width));
  const QRectF line = body.adjusted(width / 2, width / 2, -width / 2, -width / 2);
  painter.drawPath(roundedPath(line, corner - width / 2));
}

void paintBody(QPainter& painter, const QRectF& body, double corner, const GlassColors& colors, bool square) {
  if (!colors.bodyTop.isValid()) return;
  QLinearGradient gradient(body.topLeft(), body.bottomLeft());
  gradient.setColorAt(0, colors.bodyTop);
  gradient.setColorAt(1, colors.bodyBottom);
  square ? painter.fillRect(body, gradient) : painter.fillPath(roundedPath(body, corner), gradient);
}

}  // namespace

QMargins Glass::margins(const GlassColors& colors, double scale) {
  if (!colors.shadow.isValid()) {
    const int line = colors.outline.isValid() ? 1 : 0;
    return {line, line, line, line};
  }
  const auto reach = [scale](double length) { return static_cast<int>(std::ceil(length * scale)); };
  const int side = reach(theme::kShadowBlur);
  return {side, reach(theme::kShadowBlur - theme::kShadowOffset), side,
          reach(theme::kShadowBlur + theme::kShadowOffset)};
}

QPixmap Glass::render(const Key& key) {
  // Everything here is in device pixels.
  const double unit = key.scale * key.ratio;
  const QMargins space = margins(key.colors, key.scale);
  const auto device = [&key](double length) { return std::round(length * key.ratio); };
  const double corner = key.corner * unit;
  const double height = device(key.height);
  const double end = device(std::ceil(key.corner * key.scale) + theme::kShadowBlur * key.scale) + 1;
  const QRectF body(device(space.left()), device(space.top()), end * 2 + kStrip, height);
  const QSize size(static_cast<int>(body.width() + device(space.left()) + device(space.right())),
                   static_cast<int>(height + device(space.top()) + device(space.bottom())));
  QPixmap picture(size);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  const GlassColors& colors = key.colors;
  if (colors.shadow.isValid()) paintShadow(painter, size, body, corner, unit, colors.shadow);
  if (colors.outline.isValid()) drawInnerLine(painter, body.adjusted(-1, -1, 1, 1), corner + 1, 1, colors.outline);
  paintBody(painter, body, corner, colors, !colors.shadow.isValid() && !colors.outline.isValid());
  const double rim = colors.rimWidth > 0 ? std::max(1.0, std::round(colors.rimWidth * unit)) : 1;
  if (colors.rim.isValid()) drawInnerLine(painter, body, corner, rim, colors.rim);
  const double topLine = colors.topLineWidth > 0 ? std::max(1.0, std::round(colors.topLineWidth * unit)) : 1;
  paintEdge(painter, body, corner, topLine, colors.topLine, true);
  paintEdge(painter, body, corner, rim, colors.bottomLine, false);
  return picture;
}

void Glass::paint(QPainter& painter, const QRectF& rect, const GlassColors& colors, double corner, double scale,
                  const QRectF& exposed) {
  const double ratio = 1 / hairline(painter);  // The device's own answer is wrong while a widget is rendered elsewhere.
  const Key key{colors, rect.height(), corner, scale, ratio};
  if (picture_.isNull() || key != key_) {
    key_ = key;
    picture_ = render(key);
  }
  const QMargins space = margins(colors, scale);
  const auto device = [ratio](double length) { return static_cast<int>(std::lround(length * ratio)); };
  const QPoint origin(device(rect.left()) - device(space.left()), device(rect.top()) - device(space.top()));
  const QRect pane(origin, QSize(device(rect.right()) + device(space.right()) - origin.x(), picture_.height()));
  const QRectF bounds(exposed.topLeft() * ratio, exposed.size() * ratio);
  painter.save();
  painter.scale(1 / ratio, 1 / ratio);
  blit(painter, pane, exposed.isEmpty() ? pane : pane & bounds.toAlignedRect());
  painter.restore();
}

/// All in device pixels.
void Glass::blit(QPainter& painter, const QRect& pane, const QRect& exposed) const {
  const int end = (picture_.width() - kStrip) / 2;
  const auto part = [&](int x, int source, int width) {
    const int from = std::max(x, exposed.left());
    const int upTo = std::min(x + width, exposed.right() + 1);
    if (from >= upTo) return;
    painter.drawPixmap(QPoint(from, exposed.top()), picture_,
                       QRect(source + from - x, exposed.top() - pane.top(), upTo - from, exposed.height()));
  };
  const int rightEnd = pane.right() + 1 - end;
  part(pane.left(), 0, end);
  for (int x = pane.left() + end; x < rightEnd; x += kStrip) part(x, end, std::min(kStrip, rightEnd - x));
  part(rightEnd, end + kStrip, end);
}

QRegion Glass::outline(const QRect& rect, double corner) {
  const int rows = std::min(static_cast<int>(std::ceil(corner)), rect.height() / 2);
  QRegion region(rect.adjusted(0, rows, 0, -rows));
  for (int row = 0; row < rows; ++row) {
    const double below = corner - row - 0.5;
    const int inset = static_cast<int>(std::lround(corner - std::sqrt(std::max(0.0, corner * corner - below * below))));
    region += QRect(rect.left() + inset, rect.top() + row, rect.width() - inset * 2, 1);
    region += QRect(rect.left() + inset, rect.bottom() - row, rect.width() - inset * 2, 1);
  }
  return region;
}

void drawRounded(QPainter& painter, const QRectF& rect, double corner, const QColor& fill) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(fill);
  inBands(painter, rect, [&] { painter.drawRoundedRect(rect, corner, corner); });
}

void drawInnerLine(QPainter& painter, const QRectF& rect, double corner, double width, const QColor& color) {
  painter.setPen(QPen(color, width));
  painter.setBrush(Qt::NoBrush);
  const double half = width / 2;
  const QRectF line = rect.adjusted(half, half, -half, -half);
  inBands(painter, rect, [&] { painter.drawRoundedRect(line, corner - half, corner - half); });
}

void drawDashed(QPainter& painter, const QRectF& rect, double corner, const QColor& color) {
  const double width = hairline(painter);
  QPen pen(color, width);
  pen.setDashPattern({4, 3});
  if (const double unit = 1 / width; unit > 1) pen.setDashPattern({4 * unit, 3 * unit});
  painter.setPen(pen);
  painter.setBrush(Qt::NoBrush);
  const double half = width / 2;
  painter.drawRoundedRect(rect.adjusted(half, half, -half, -half), corner - half, corner - half);
}

double hairline(const QPainter& painter) {
  const double unit = std::hypot(painter.deviceTransform().m11(), painter.deviceTransform().m12());
  return unit > 0 ? 1 / unit : 1;
}

}  // namespace tarnwick
