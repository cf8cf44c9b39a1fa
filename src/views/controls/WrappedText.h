#pragma once

#include <QSizeF>
#include <QString>
#include <QTextLayout>

#include "views/theme/Typography.h"

class QPainter;

namespace tarnwick {

/// A text of a bubble in lines of a width at most; a word that is wider is broken.
struct WrappedText {
  QTextLayout layout;
  QSizeF size;

  WrappedText(const QString& text, TextStyle style, double width);
  void draw(QPainter& painter, const QPointF& place, bool fromTheRight);
};

}  // namespace tarnwick
