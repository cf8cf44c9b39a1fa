#include "views/families/services/ServiceMarkets.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "views/families/services/ServiceFitting.h"
#include "views/families/services/ServiceTile.h"
#include "views/tiles/ChartPainting.h"
#include "views/tiles/TileCanvas.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kQuoteName = 25;
constexpr double kQuotePrice = 49;
constexpr double kQuoteChartTop = 14;
constexpr double kQuoteChartTall = 23;
constexpr double kQuoteChartLeast = 46;
constexpr double kQuoteChartWidest = 76;
constexpr double kQuoteChartGap = 12;
/// What is left of the space on either side of a price between the name and its change.
constexpr double kWatchGap = 5;

}  // namespace

ChartLook seriesLook(const TileCanvas& canvas, const ServiceContent& content, const QList<double>& numbers) {
  const int sign = FigureWords::signOf(content.change);
  ChartLook look{sign == 0 ? canvas.accent() : canvas.colors().accent(sign > 0 ? Accent::Green : Accent::Red)};
  const auto [least, most] = std::ranges::minmax(numbers);
  // A curve of prices is seen by its changes, one of counts from nothing on.
  const double space = most > least ? (most - least) * 0.1 : std::max(1.0, std::abs(most) * 0.1);
  look.low = least - space;
  look.high = most + space;
  look.depth = numbers.size();
  return look;
}

void paintQuoteSeries(TileCanvas& canvas, const ServiceContent& content) {
  using namespace theme;
  static constexpr std::array styles = {TextStyle::Figure17, TextStyle::Title, TextStyle::ListRowStrong};
  const double right = canvas.width() - kTextRight;
  const TextLine change = canvas.line(content.change, TextStyle::TabLabel);
  const double space = right - std::max(kQuoteChartLeast, change.width()) - kQuoteChartGap - kTextLeft;
  // Of a price the cents matter more than its size.
  const bool isWhole = fitting(canvas, {content.headline}, space, std::span(styles).first(2)).has_value();
  const double end = drawFitting(canvas, isWhole ? QList<FigureWords>{content.headline} : content.ways(),
                                 {kTextLeft, kQuotePrice}, space, canvas.colors().primary, styles);
  // In what currency the price says itself.
  const TextLine name =
      canvas.line(content.beside.section(u" · "_s, 0, 0), TextStyle::TabLabel).elided(space, Elide::End);
  name.draw(canvas.painter(), {kTextLeft, kQuoteName}, canvas.colors().secondary);
  change.drawRight(canvas.painter(), {right, kQuotePrice}, changeInk(canvas, FigureWords::signOf(content.change)));
  const double width = std::min(right - std::max(end, kTextLeft + name.width()) - kQuoteChartGap, kQuoteChartWidest);
  paintChart(canvas, {right - width, kQuoteChartTop, width, kQuoteChartTall}, content.numbers,
             seriesLook(canvas, content, content.numbers));
}

namespace {

/// The word at the right of a line.
QString asideOf(const ServiceLine& line) {
  if (!line.change.isEmpty() || line.ways.isEmpty()) return line.change;
  const FigureWords& words = line.ways.first();
  return words.unit.isEmpty() ? words.figure : words.figure + u' ' + words.unit;
}

/// The prices of lines that have a change too, in the longest way in which all of them fit between name and change;
/// empty where none does.
QList<TextLine> pricesOf(const TileCanvas& canvas, std::span<const ServiceLine> lines, double& right) {
  const double all = canvas.spaceAfter(theme::kTextLeft);
  double changes = 0;
  for (const ServiceLine& line : lines)
    changes = std::max(changes, canvas.line(asideOf(line), TextStyle::ListRow).width());
  right = canvas.width() - theme::kTextRight - changes - kWatchGap;
  // Cents in one line and none in the next would be a muddle.
  const bool haveShort = std::ranges::all_of(lines, [](const ServiceLine& line) { return line.ways.size() != 1; });
  for (const bool isShort : {false, true}) {
    if (isShort && !haveShort) break;
    QList<TextLine> prices;
    const bool fits = std::ranges::all_of(lines, [&](const ServiceLine& line) {
      QString price;
      if (!line.change.isEmpty() && !line.ways.isEmpty()) {
        const FigureWords& words = isShort ? line.ways.last() : line.ways.first();
        price = words.unit.isEmpty() ? words.figure : words.figure + u'\u00a0' + words.unit;
      }
      prices << canvas.line(price, TextStyle::Caption);
      const double name = canvas.line(line.label, TextStyle::ListRowStrong).width();
      return price.isEmpty() || name + prices.last().width() + changes + kWatchGap * 2 <= all;
    });
    if (fits) return prices;
  }
  return {};
}

}  // namespace

void paintWatchlist(TileCanvas& canvas, const ServiceContent& content) {
  const QList<double> baselines = canvas.rowBaselines(content.rows.size());
  const std::span<const ServiceLine> lines(content.rows.constData(), static_cast<std::size_t>(baselines.size()));
  double priceRight = 0;
  const QList<TextLine> prices = pricesOf(canvas, lines, priceRight);
  for (qsizetype i = 0; i < baselines.size(); ++i) {
    const ServiceLine& line = content.rows[i];
    canvas.row(theme::kTextLeft, baselines[i], line.label, TextStyle::ListRowStrong, asideOf(line),
               changeInk(canvas, FigureWords::signOf(line.change)));
    if (!prices.isEmpty()) prices[i].drawRight(canvas.painter(), {priceRight, baselines[i]}, canvas.colors().secondary);
  }
}

}  // namespace tarnwick
