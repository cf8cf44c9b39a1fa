#pragma once

#include <QColor>
#include <QFont>
#include <QGlyphRun>
#include <QPainter>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <vector>

namespace tarnwick {

/// What a text is, which decides its size, weight and tracking.
enum class TextStyle {
  Display,
  Headline,
  Timer,
  Gauge,
  Title,
  Body,
  ListRow,
  Caption,
  GaugeLabel,
  Figure17,
  BadgeInitial,
  TabLabel,
  Flip,           ///< The cards of a flip clock.
  Overlap,        ///< The figures of an overlap clock.
  Capitals,       ///< A short word in capital letters.
  BodyStrong,     ///< The word of a button.
  DayFigure,      ///< The number of a day beside something else.
  ListRowStrong,  ///< The row of a list that matters most.
  CommandField,   ///< What is written in the command bar.
  CommandTitle,
  CommandCaption,
  KeyCap,
};

/// Where a text that is too long loses characters: names in the middle, sentences at the end.
enum class Elide { End, Middle };

/// One line of text, measured. Its lengths are in the units of a tile; `scale` is what the painter multiplies them by,
/// and only serves to keep the text from falling below the least size on the screen.
///
/// Every digit is in a cell as wide as the widest digit, so that a figure that changes does not move its
/// neighbours, whatever the font. A colon between two digits is centred on their height.
///
/// A text runs the way its first letter does, whatever the window around it does; what runs the other way within it
/// is where a reader expects it. Where the painter is mirrored it takes the mirrored place, its letters as they are.
class TextLine {
 public:
  TextLine(const QString& text, TextStyle style, double scale = 1);

  /// The same text, shortened with "…" where it is wider than `width`. Empty where not even that fits.
  TextLine elided(double width, Elide mode) const;
  /// This style at another share of its size and with medium weight, as units are set.
  static TextLine unit(const QString& text, TextStyle ofNumber, double scale = 1);

  const QString& text() const { return text_; }
  /// The advance of the whole line.
  double width() const { return width_; }
  /// How far the ink of the leftmost character lies right of the line's origin.
  double leftBearing() const { return leftBearing_; }
  /// How far the ink begins behind the line's origin; the painter may be mirrored.
  double inkInset(const QPainter& painter) const;
  double ascent() const;
  double descent() const;
  double capHeight() const;
  double pixelSize() const { return size_; }

  /// Draws with the origin at `baseline`, whose height is rounded to a whole device pixel.
  void draw(QPainter& painter, QPointF baseline, const QColor& color) const;
  /// Draws so that the ink, not the origin, begins at `baseline`.
  void drawFromInk(QPainter& painter, QPointF baseline, const QColor& color) const;
  void drawCentred(QPainter& painter, QPointF baseline, const QColor& color) const;
  void drawRight(QPainter& painter, QPointF baseline, const QColor& color) const;

 private:
  TextLine(const QString& text, TextStyle style, double scale, bool unit, Qt::LayoutDirection direction);
  void layOut();

  QString text_;
  TextStyle style_;
  double scale_;
  bool unit_;
  Qt::LayoutDirection direction_;
  double size_ = 0;
  QFont font_;  ///< Made kGrid times as large as it is drawn, so that sizes between whole pixels exist.
  std::vector<QGlyphRun> glyphs_;
  double width_ = 0;
  double leftBearing_ = 0;
  double rightBearing_ = 0;  ///< The same for the rightmost character, from the end of the line.
};

/// The program's one source of fonts.
struct Typography {
  /// How much larger than drawn the fonts of TextLine are.
  static constexpr double kGrid = 4;

  /// The family that the desktop asks for, or Inter where it asks for none in particular.
  static QString family();
  /// Asks the desktop again, after its font changed.
  static void reload();
  /// The size of a style, never below the least size on a screen at `scale`.
  static double pixelSize(TextStyle style, double scale = 1);
  /// A font in device-independent pixels for widgets of Qt's own; whole pixels only.
  static QFont widgetFont(TextStyle style);
  /// The first of `texts`, from long to short, that fits; the last one elided where none does.
  static TextLine fitting(const QStringList& texts, TextStyle style, double width, Elide mode, double scale = 1);
};

/// The height of a point in the painter's coordinates, moved to the nearest whole device pixel.
double snappedY(const QPainter& painter, QPointF point);

}  // namespace tarnwick
