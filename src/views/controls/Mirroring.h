#pragma once

#include <QPainter>
#include <QRectF>
#include <QWidget>

#include "views/theme/Typography.h"

namespace tarnwick {

/// Mirrors what is painted in a widget where people read from right to left: painting code is written for left to
/// right. What goes in is of that, what comes out is where it appears.
class Mirroring {
 public:
  explicit Mirroring(const QWidget& widget) : width_(widget.width()), mirrored_(widget.isRightToLeft()) {}

  QRectF operator()(const QRectF& box) const {
    return mirrored_ ? QRectF(width_ - box.right(), box.top(), box.width(), box.height()) : box;
  }
  double operator()(double x) const { return mirrored_ ? width_ - x : x; }

  /// Draws a line of text that begins at a place, or ends there.
  void begin(QPainter& painter, const TextLine& line, QPointF place, const QColor& ink) const {
    mirrored_ ? line.drawRight(painter, seen(place), ink) : line.draw(painter, place, ink);
  }
  void end(QPainter& painter, const TextLine& line, QPointF place, const QColor& ink) const {
    mirrored_ ? line.draw(painter, seen(place), ink) : line.drawRight(painter, place, ink);
  }
  /// The side where lines of text begin, and the one where they end.
  Qt::Alignment reading() const { return mirrored_ ? Qt::AlignRight : Qt::AlignLeft; }
  Qt::Alignment ending() const { return mirrored_ ? Qt::AlignLeft : Qt::AlignRight; }
  bool isMirrored() const { return mirrored_; }

 private:
  QPointF seen(QPointF place) const { return {(*this)(place.x()), place.y()}; }

  double width_;
  bool mirrored_;
};

/// Has words run the way that they are written: a sentence of another language keeps its stop at its end.
inline void runAsWritten(QPainter& painter, const QString& words) {
  painter.setLayoutDirection(words.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
}

}  // namespace tarnwick
