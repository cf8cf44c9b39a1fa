#include "views/families/services/ServiceFitting.h"

#include "views/tiles/TileCanvas.h"

namespace tarnwick {

namespace {

constexpr double kFigureUnitGap = 2;

}  // namespace

double widthOf(const TileCanvas& canvas, const FigureWords& words, TextStyle style) {
  const double unit =
      words.unit.isEmpty() ? 0 : kFigureUnitGap + TextLine::unit(words.unit, style, canvas.scale()).width();
  return canvas.line(words.figure, style).width() + unit;
}

std::optional<FittedFigure> fitting(const TileCanvas& canvas, const QList<FigureWords>& ways, double space,
                                    std::span<const TextStyle> styles) {
  for (const TextStyle style : styles)
    for (const FigureWords& words : ways)
      if (widthOf(canvas, words, style) <= space) return FittedFigure{words, style};
  return std::nullopt;
}

double drawFitting(TileCanvas& canvas, const QList<FigureWords>& ways, QPointF place, double space, const QColor& ink,
                   std::span<const TextStyle> styles) {
  if (const auto fitted = fitting(canvas, ways, space, styles))
    return canvas.figure(place.x(), place.y(), fitted->style, fitted->words.figure, fitted->words.unit, ink);
  const FigureWords& words = ways.last();
  const QString whole = words.unit.isEmpty() ? words.figure : words.figure + u' ' + words.unit;
  const TextLine line = canvas.line(whole, styles.back()).elided(space, Elide::End);
  line.draw(canvas.painter(), place, ink);
  return place.x() + line.width();
}

QColor changeInk(const TileCanvas& canvas, int sign) {
  if (sign == 0) return canvas.colors().secondary;
  return canvas.colors().accentWord(sign > 0 ? Accent::Green : Accent::Red);
}

}  // namespace tarnwick
