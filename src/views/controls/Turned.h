#pragma once

#include <QPainter>
#include <QRectF>
#include <QWidget>

#include "views/theme/Typography.h"

namespace tarnwick {

/// What is painted in a widget is thought of from left to right; where people read the other way it is turned over as a
/// whole. Places that go in are as thought, places that come out are as seen.
class Turned {
 public:
  explicit Turned(const QWidget& widget) : width_(widget.width()), turns_(widget.isRightToLeft()) {}

  QRectF operator()(const QRectF& box) const {
    return turns_ ? QRectF(width_ - box.right(), box.top(), box.width(), box.height()) : box;
  }
  double operator()(double x) const { return turns_ ? width_ - x : x; }

  /// Draws a line of text that begins at a place, or ends there.
  void begin(QPainter& painter, const TextLine& line, QPointF place, const QColor& ink) const {
    turns_ ? line.drawRight(painter, seen(place), ink) : line.draw(painter, place, ink);
  }
  void end(QPainter& painter, const TextLine& line, QPointF place, const QColor& ink) const {
    turns_ ? line.draw(painter, seen(place), ink) : line.drawRight(painter, place, ink);
  }
  /// The side where lines of text begin, and the one where they end.
  Qt::Alignment reading() const { return turns_ ? Qt::AlignRight : Qt::AlignLeft; }
  Qt::Alignment ending() const { return turns_ ? Qt::AlignLeft : Qt::AlignRight; }
  bool turns() const { return turns_; }

 private:
  QPointF seen(QPointF place) const { return {(*this)(place.x()), place.y()}; }

  double width_;
  bool turns_;
};

/// Has words run the way that they are written: a sentence of another language keeps its stop at its end.
inline void runAsWritten(QPainter& painter, const QString& words) {
  painter.setLayoutDirection(words.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
}

}  // namespace tarnwick
