#include "views/families/utilities/UtilityTiles.h"

#include <cmath>

#include "commandbar/UtilityText.h"
#include "views/families/utilities/UtilityOptions.h"
#include "views/theme/Emoji.h"
#include "views/theme/Glass.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kCornerSymbol = 18;
constexpr double kCornerSymbolTop = 22;
constexpr double kSymbolGap = 6;
/// What a reader needs to know how far something is; the panel has the rest.
constexpr int kUsefulDigits = 2;

constexpr QSizeF kSwatch(36, 28);
constexpr double kSwatchTop = 9;
constexpr double kTileSwatchCorner = 8;
constexpr double kHexBaseline = 53;

constexpr double kEmojiSize = 20;
constexpr double kEmojiPitch = 25;

/// The form of a converted value that a tile shows: two digits that mean something.
QStringList shortForms(double value, const QLocale& locale) {
  const double size = std::abs(value);
  if (value == 0 || size >= 1e6 || size < 1e-4) return UtilityText::forms(value, locale);
  const int whole = static_cast<int>(std::floor(std::log10(size))) + 1;
  return {UtilityText::number(value, locale, std::max(size < 100 ? 1 : 0, kUsefulDigits - whole))};
}

struct Fitted {
  TextStyle style = TextStyle::Title;
  QString figure;
};

/// The longest form in the largest style that there is space for: a shorter form is better than a smaller one.
Fitted fitted(const TileCanvas& canvas, const ResultContent& content, double space) {
  for (const TextStyle style : {TextStyle::Headline, TextStyle::Gauge, TextStyle::Title}) {
    const double unit = content.unit.isEmpty() ? 0 : 2 + TextLine::unit(content.unit, style, canvas.scale()).width();
    for (const QString& figure : content.figures)
      if (canvas.line(figure, style).width() + unit <= space) return {style, figure};
  }
  return {TextStyle::Title, content.figures.last()};
}

}  // namespace

ResultContent makeCalculator(const TileRequest& request) {
  const QLocale& locale = request.sources.locale;
  const QString expression = request.widget.options.value(option::expression).simplified();
  ResultContent content{{UtilityText::number(0, locale)}, {}, request.title(), {}, request.definition.symbol};
  if (expression.isEmpty()) return content;
  if (const auto value = UtilityText::calculate(expression, locale).value) {
    content.figures = UtilityText::forms(*value, locale);
    content.source = expression;
    content.exact = content.figures.first();
  }
  return content;
}

ResultContent makeConverter(const TileRequest& request) {
  const QLocale& locale = request.sources.locale;
  const Conversion chosen = Conversion::of(request.widget);
  ResultContent content{{u"–"_s}, chosen.to, u"%1 %2"_s.arg(chosen.value, chosen.from), {}, request.definition.symbol};
  if (content.source.startsWith(u'-')) content.source[0] = u'−';
  if (chosen.isOfMoney()) {
    const auto rate = request.sources.readings.rates.constFind(chosen.pair());
    if (rate == request.sources.readings.rates.constEnd()) return content;
    if (const auto worth = exchanged(chosen.value, *rate, locale)) {
      content.figures = UtilityText::forms(*worth, locale);
      content.exact = content.figures.first();
    }
    return content;
  }
  if (const auto value = UtilityText::convert(chosen.value, chosen.from, chosen.to, locale).value) {
    content.figures = shortForms(*value, locale);
    content.exact = UtilityText::forms(*value, locale).first();
  }
  return content;
}

TileText describe(const ResultContent& content, const QString& name) {
  if (content.exact.isEmpty()) return {name, content.source == name ? QString() : content.source};
  const QString result = content.unit.isEmpty() ? content.exact : u"%1 %2"_s.arg(content.exact, content.unit);
  return {name, u"%1 = %2"_s.arg(content.source, result)};
}

void paint(TileCanvas& canvas, const ResultContent& content) {
  using namespace theme;
  const double right = canvas.width() - kTextRight;
  const double beside = canvas.spaceAfter(kTextLeft) - kCornerSymbol - kSymbolGap;
  Fitted fit = fitted(canvas, content, beside);
  const TextLine unit = TextLine::unit(content.unit, fit.style, canvas.scale());
  const TextLine figure = canvas.line(fit.figure, fit.style);
  const double wanted = figure.width() + (content.unit.isEmpty() ? 0 : 2 + unit.width());
  // A figure that is long in its shortest form takes the symbol's place.
  const bool decorated = wanted <= beside;
  if (decorated)
    canvas.symbol(content.symbol, {right - kCornerSymbol / 2, kCornerSymbolTop}, kCornerSymbol, canvas.accent());
  const bool captioned = canvas.showsCaption();
  const double baseline = captioned ? kHeadlineBaseline : TileCanvas::centredBaseline(figure);
  const double end = canvas.figure(kTextLeft, baseline, fit.style, fit.figure);
  if (!content.unit.isEmpty())
    unit.elided(right - end - 2, Elide::End).draw(canvas.painter(), {end + 2, baseline}, canvas.colors().secondary);
  if (captioned)
    canvas.line(content.source, TextStyle::Caption)
        .elided(canvas.spaceAfter(kTextLeft), Elide::End)
        .drawFromInk(canvas.painter(), {kTextLeft, kCaptionBaseline}, canvas.colors().secondary);
}

ColorContent makeColor(const TileRequest& request) {
  const auto color = colorOfHex(request.widget.options.value(option::color));
  if (!color) return {std::nullopt, TileWords::tr("Pick")};
  return {color->rgb(), hexOf(*color)};
}

TileText describe(const ColorContent& content, const QString& name) {
  return {name, content.color ? content.hex : TileWords::tr("Nothing picked yet")};
}

void paint(TileCanvas& canvas, const ColorContent& content) {
  using namespace theme;
  const bool captioned = canvas.showsCaption();
  const double middle = captioned ? kSwatchTop + kSwatch.height() / 2 : kTileMiddle;
  const QPointF centre(canvas.width() / 2, middle);
  if (content.color) {
    const QRectF swatch(centre - QPointF(kSwatch.width(), kSwatch.height()) / 2, kSwatch);
    drawRounded(canvas.painter(), swatch, kTileSwatchCorner, QColor::fromRgb(*content.color));
    // So that a swatch of the tile's own colour is seen too.
    drawInnerLine(canvas.painter(), swatch, kTileSwatchCorner, 1, canvas.colors().separator);
  } else {
    canvas.symbol(u"eyedropper.halffull"_s, centre, kSymbolSize, canvas.accent());
  }
  if (captioned)
    canvas.centredText(kHexBaseline, TextStyle::Caption, content.hex,
                       content.color ? canvas.colors().primary : canvas.colors().secondary);
}

EmojiContent makeEmoji(const TileRequest& request) {
  return {recentEmoji(request.widget).first(std::min(EmojiContent::kShown, recentEmoji(request.widget).size()))};
}

TileText describe(const EmojiContent& content, const QString& name) { return {name, content.emoji.join(u' ')}; }

void paint(TileCanvas& canvas, const EmojiContent& content) {
  const auto count = static_cast<double>(content.emoji.size());
  double x = canvas.width() / 2 - kEmojiPitch * (count - 1) / 2;
  for (const QString& emoji : content.emoji) {
    drawEmoji(canvas.painter(), emoji,
              QRectF(x - kEmojiSize / 2, theme::kTileMiddle - kEmojiSize / 2, kEmojiSize, kEmojiSize));
    x += kEmojiPitch;
  }
}

}  // namespace tarnwick
