#include "views/tiles/FigureTile.h"

#include "views/tiles/TileCanvas.h"

namespace tarnwick {

namespace {

constexpr double kCompactText = 36;

/// The largest in which all of it fits on the tile.
TextStyle figureStyle(const TileCanvas& canvas, const FigureContent& content, double space) {
  for (const TextStyle style : {TextStyle::Headline, TextStyle::Figure17}) {
    const double unit = content.unit.isEmpty() ? 0 : 2 + TextLine::unit(content.unit, style, canvas.scale()).width();
    if (canvas.line(content.figure, style).width() + unit <= space) return style;
  }
  return TextStyle::Title;
}

}  // namespace

TileText describe(const FigureContent& content, const QString& name) {
  if (content.figure == FigureContent::dash()) return {name, {}};
  return {name, content.unit.isEmpty() ? content.figure : content.figure + u' ' + content.unit};
}

void paint(TileCanvas& canvas, const FigureContent& content) {
  using namespace theme;
  canvas.symbol(content.symbol, {kTextLeft + (content.compact ? 8 : kSymbolSize / 2), kTileMiddle}, kSymbolSize,
                canvas.accent());
  const double x = content.compact                       ? kCompactText
                   : canvas.width() <= kNarrowSymbolTile ? kTextAfterSymbolNarrow
                                                         : kTextAfterSymbol;
  const bool caption = canvas.showsCaption();
  const TextStyle style = figureStyle(canvas, content, canvas.spaceAfter(x));
  const double baseline = caption ? kHeadlineBaseline : TileCanvas::centredBaseline(canvas.line(content.figure, style));
  const QColor ink = content.figure == FigureContent::dash() ? canvas.colors().tertiary : canvas.colors().primary;
  canvas.figure(x, baseline, style, content.figure, content.unit, ink);
  if (caption)
    canvas.text(x, kCaptionBaseline, canvas.spaceAfter(x), TextStyle::Caption, content.caption,
                canvas.colors().secondary);
}

}  // namespace tarnwick
