#pragma once

#include <QColor>
#include <QList>
#include <QPointF>
#include <optional>
#include <span>

#include "views/theme/Typography.h"
#include "widgets/FigureWords.h"

namespace tarnwick {

class TileCanvas;

/// A figure as it is drawn: in which of its ways, and how large.
struct FittedFigure {
  FigureWords words;
  TextStyle style = TextStyle::Headline;
};

double widthOf(const TileCanvas& canvas, const FigureWords& words, TextStyle style);

/// The largest of `styles` in which one of the ways fits as a whole, and the longest of those; absent where none does.
std::optional<FittedFigure> fitting(const TileCanvas& canvas, const QList<FigureWords>& ways, double space,
                                    std::span<const TextStyle> styles);
/// Draws a figure as fitting() says, shortened where nothing fits. Returns where it ends.
double drawFitting(TileCanvas& canvas, const QList<FigureWords>& ways, QPointF place, double space, const QColor& ink,
                   std::span<const TextStyle> styles);

/// The colour of a word about a rise or a fall; secondary for what is neither.
QColor changeInk(const TileCanvas& canvas, int sign);

}  // namespace tarnwick
