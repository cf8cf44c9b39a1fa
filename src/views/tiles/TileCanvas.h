#pragma once

#include <QPainter>
#include <QString>
#include <QStringList>

#include "views/theme/Symbols.h"
#include "views/theme/Theme.h"
#include "views/theme/Typography.h"
#include "views/theme/Upright.h"
#include "views/tiles/TilePainter.h"
#include "views/tiles/TileStyle.h"

namespace tarnwick {

/// What one tile is painted on: 64 units high, whatever the dock's scale. It knows the anatomy that families share, so
/// that a painter says what is placed where and nothing else.
///
/// Painters are written for people who read from left to right. Where they read from right to left the canvas itself is
/// mirrored: everything is on the other side, while texts, symbols, pictures and arcs stay as they are. What has a
/// direction of its own, such as the face of a clock or the time in a chart, is drawn through unmirrored().
class TileCanvas {
 public:
  TileCanvas(QPainter& painter, double width, const TileStyle& style)
      : painter_(painter), width_(width), style_(style) {}

  QPainter& painter() { return painter_; }
  double width() const { return width_; }
  double scale() const { return style_.scale; }
  /// Whether the tile is drawn at its own size, so that pictures of its parts are worth keeping.
  bool isStill() const { return factor() == 1; }
  /// How much larger than its own size the tile is drawn.
  double factor() const { return tileFactor(style_); }
  bool isEditing() const { return style_.editing; }
  double loading() const { return style_.loading; }
  double iconOpacity() const { return style_.iconOpacity; }
  QPixmap icon(const QString& name, int size, double ratio) const {
    return style_.icons && *style_.icons ? (*style_.icons)(name, size, ratio) : QPixmap();
  }
  const Palette& colors() const { return style_.palette; }
  /// The tile's one accent.
  QColor accent() const { return style_.palette.accent(style_.accent); }
  Accent accentName() const { return style_.accent; }
  QColor accentWord() const { return style_.palette.accentWord(style_.accent); }

  /// Whether what is drawn now is on the other side of the tile.
  bool isMirrored() const { return tarnwick::isMirrored(painter_); }
  /// Draws something as it is for everyone, about the vertical line at `middle`, which itself is mirrored.
  template <class Draw>
  void unmirrored(double middle, const Draw& draw) {
    if (!isMirrored()) return draw();
    painter_.save();
    keepUpright(painter_, middle);
    draw();
    painter_.restore();
  }

  /// Whether there is space for a third row or a label; small docks leave it out first.
  bool showsLastRow() const { return style_.scale >= theme::kCompactScale; }
  /// Whether there is space for a caption under a headline or title; the smallest docks leave it out too.
  bool showsCaption() const { return style_.scale >= theme::kBareScale; }

  TextLine line(const QString& text, TextStyle style) const { return TextLine(text, style, style_.scale); }
  /// The baseline that centres capitals and figures within `height`.
  static double centredBaseline(const TextLine& line, double height = theme::kTileMiddle) {
    return height + line.capHeight() / 2;
  }

  /// A large figure, its ink beginning at `x`, with a small unit behind it. Returns where it ends.
  double figure(double x, double baseline, TextStyle style, const QString& text, const QString& unit = {},
                const QColor& color = {});
  /// A line that begins at `x`, shortened to `width`.
  void text(double x, double baseline, double width, TextStyle style, const QString& text, const QColor& color,
            Elide elide = Elide::End);
  /// A line in the middle of the tile, shortened to what the tile has space for.
  void centredText(double baseline, TextStyle style, const QString& text, const QColor& color,
                   Elide elide = Elide::End);
  /// A name or title shortened to `space` at its end. In the smallest docks it is empty where so few letters would be
  /// left that they say nothing: there the picture beside it says more alone.
  TextLine name(const QString& text, TextStyle style, double space) const;
  /// A row of a list from `x` to the edge of the text: its title, and a word about it at the right. The word gives way
  /// where the title would lose the part that distinguishes it.
  void row(double x, double baseline, const QString& title, TextStyle style, const QString& word,
           const QColor& wordColor);
  void symbol(const QString& name, QPointF centre, double size, const QColor& color);
  /// An arc with round ends; degrees clockwise from the top, for everyone.
  void arc(QPointF centre, double radius, double width, double begin, double sweep, const QColor& color);

  /// A rectangle whose edges lie on whole device pixels, at least one apart.
  QRectF snapped(const QRectF& rect) const;

  /// Where the rows of a list are, `wanted` at most; fewer in small docks, whose letters are larger.
  QList<double> rowBaselines(qsizetype wanted) const;

  /// The width between `x` and the right edge of the text.
  double spaceAfter(double x) const { return width_ - theme::kTextRight - x; }

 private:
  QPainter& painter_;
  double width_;
  const TileStyle& style_;
};

}  // namespace tarnwick
