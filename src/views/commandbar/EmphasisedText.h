#pragma once

#include <QColor>
#include <QList>
#include <QPainter>
#include <QRectF>
#include <QString>

#include "commandbar/CommandMatch.h"
#include "views/theme/Typography.h"

namespace tarnwick {

/// One line of text in which some letters stand out, as those that a search found. It is laid out as a whole, so that
/// letters join and both directions of writing run as they would without the emphasis.
struct EmphasisedText {
  QString text;
  QList<CommandMatch::Span> strong;  ///< Sorted; in code units of `text`.
  TextStyle style = TextStyle::CommandTitle;
  qsizetype quietFrom = -1;  ///< Where the rest begins that only says more of it; -1 for none.
  QColor quietInk{};         ///< Of that rest.
  Elide elide = Elide::End;  ///< Where it is shortened.

  /// How wide it is as a whole.
  double width() const;
  /// Draws it in the middle of the height of `box`, at its right with Qt::AlignRight, shortened where it is too long.
  /// Returns how wide it is then.
  double draw(QPainter& painter, const QRectF& box, const QColor& ink, const QColor& strongInk,
              Qt::Alignment alignment) const;
};

}  // namespace tarnwick
