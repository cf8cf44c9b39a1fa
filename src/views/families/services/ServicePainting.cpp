#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "views/families/services/ServiceSeries.h"
#include "views/families/services/ServiceTile.h"
#include "views/theme/BadgePicture.h"
#include "views/theme/Glass.h"
#include "views/tiles/ChartPainting.h"
#include "views/tiles/TileCanvas.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kTileBadge = 20;
constexpr double kTileBadgeCorner = 6;
constexpr double kBareTileBadge = 26;
constexpr double kSmallBadge = 16;
constexpr double kSmallBadgeCorner = 5;
constexpr double kSmallBadgePlace = 12;
constexpr double kFigureUnitGap = 2;
constexpr double kChangeBaseline = 30;
constexpr double kChangeGap = 8;

// Beside a headline.
constexpr double kSparkGap = 10;
constexpr double kSparkLeast = 32;
constexpr double kSparkMost = 48;
constexpr double kSparkTop = 15;
constexpr double kSparkHeight = 18;
constexpr qsizetype kSparkValues = 24;

// Charts at the right.
constexpr double kSeriesBaseline = 50;
constexpr double kSeriesGap = 10;
constexpr double kSeriesTop = 14;
constexpr double kSeriesFoot = 51;
constexpr double kLineWidest = 76;
constexpr double kLineTop = 17;
constexpr double kLineTall = 28;
constexpr double kSeriesLeast = 40;

// Figures beside each other.
constexpr double kDividerHeight = 32;
constexpr double kColumnPadding = 8;
constexpr double kColumnGap = 13;

// Allowances.
constexpr double kUsageBar = 3.5;
constexpr double kUsageFirst = 26;
constexpr double kUsagePitch = 22;
constexpr double kUsageBarBelow = 4.5;
constexpr double kUsageAlone = 27;
constexpr double kUsageCaption = 51;
constexpr double kUsageGap = 8;

// The gauge.
constexpr double kGaugeMiddle = 35;
constexpr double kGaugeHeight = 33.5;
constexpr double kGaugeRadius = 24;
constexpr double kGaugeStroke = 5;
constexpr double kGaugeBegin = -135;
constexpr double kGaugeSweep = 270;
constexpr double kGaugeFigureBaseline = 39.5;
constexpr double kGaugeText = 70;
constexpr double kGaugeEnd = 8;
constexpr double kGaugeInside = 36;
constexpr double kDimmed = 0.45;

// The dot of work.
constexpr double kWorkDotInset = 16;
constexpr double kWorkDotMiddle = 25;
constexpr double kWorkDotRadius = 4;
constexpr double kWorkHaloRadius = 7;
constexpr double kWorkHalo = 0.25;
constexpr double kWorkDotSpace = 14;

constexpr std::array kHeadlineStyles = {TextStyle::Headline, TextStyle::Figure17, TextStyle::Title,
                                        TextStyle::ListRowStrong};

double widthOf(const TileCanvas& canvas, const FigureWords& words, TextStyle style) {
  const double unit =
      words.unit.isEmpty() ? 0 : kFigureUnitGap + TextLine::unit(words.unit, style, canvas.scale()).width();
  return canvas.line(words.figure, style).width() + unit;
}

void badgeAt(TileCanvas& canvas, const ServiceContent& content, QPointF centre, double side, double corner) {
  drawServiceBadge(canvas.painter(), QRectF(centre.x() - side / 2, centre.y() - side / 2, side, side), corner,
                   content.badge, canvas.colors(), canvas.showsLastRow() ? BadgeDetail::Whole : BadgeDetail::Initial);
}

void badgeBefore(TileCanvas& canvas, const ServiceContent& content) {
  badgeAt(canvas, content, {theme::kTextLeft + theme::kSymbolSize / 2, theme::kTileMiddle},
          canvas.showsCaption() ? kTileBadge : kBareTileBadge, kTileBadgeCorner);
}

double textAfterBadge(const TileCanvas& canvas) {
  return canvas.width() <= theme::kNarrowSymbolTile ? theme::kTextAfterSymbolNarrow : theme::kTextAfterSymbol;
}

QColor inkOf(const TileCanvas& canvas, const ServiceContent& content) {
  return content.isDimmed ? canvas.colors().secondary : canvas.colors().primary;
}

/// A caption that begins with a change is told by its colour too.
int signOfCaption(const ServiceContent& content) {
  return content.change.isEmpty() ? 0 : FigureWords::signOf(content.captions.first());
}

QColor changeInk(const TileCanvas& canvas, int sign) {
  if (sign == 0) return canvas.colors().secondary;
  return canvas.colors().accentWord(sign > 0 ? Accent::Green : Accent::Red);
}

/// The largest style in which a figure fits as a whole; absent where none is small enough.
std::optional<TextStyle> fittingStyle(const TileCanvas& canvas, const FigureWords& words, double space,
                                      std::span<const TextStyle> styles) {
  for (const TextStyle style : styles)
    if (widthOf(canvas, words, style) <= space) return style;
  return std::nullopt;
}

/// Draws a figure in the largest style that fits, shortened where none does. Returns where it ends.
double drawFitting(TileCanvas& canvas, const FigureWords& words, QPointF place, double space, const QColor& ink,
                   std::span<const TextStyle> styles) {
  if (const auto style = fittingStyle(canvas, words, space, styles))
    return canvas.figure(place.x(), place.y(), *style, words.figure, words.unit, ink);
  const QString whole = words.unit.isEmpty() ? words.figure : words.figure + u' ' + words.unit;
  const TextLine line = canvas.line(whole, styles.back()).elided(space, Elide::End);
  line.draw(canvas.painter(), place, ink);
  return place.x() + line.width();
}

/// The curve of what rose or fell has the colour of that.
QColor curveInk(const TileCanvas& canvas, const ServiceContent& content) {
  const int sign = FigureWords::signOf(content.change);
  return sign == 0 ? canvas.accent() : canvas.colors().accent(sign > 0 ? Accent::Green : Accent::Red);
}

ChartLook lookOf(const TileCanvas& canvas, const ServiceContent& content, const QList<double>& numbers) {
  ChartLook look{curveInk(canvas, content)};
  const auto [least, most] = std::ranges::minmax(numbers);
  // A curve of prices is seen by its changes, one of counts from nothing on.
  const double space = most > least ? (most - least) * 0.1 : std::max(1.0, std::abs(most) * 0.1);
  look.low = least - space;
  look.high = most + space;
  look.depth = numbers.size();
  return look;
}

void drawCaption(TileCanvas& canvas, const ServiceContent& content, double x, double baseline, double space) {
  const TextLine line = Typography::fitting(content.captions, TextStyle::Caption, space, Elide::End, canvas.scale());
  line.draw(canvas.painter(), {x, baseline}, changeInk(canvas, signOfCaption(content)));
}

/// Draws what the value changed by at the right of it. Returns whether there is space for that.
bool drawChange(TileCanvas& canvas, const ServiceContent& content, double from) {
  if (content.change.isEmpty()) return false;
  const TextLine line = canvas.line(content.change, TextStyle::TabLabel);
  const double right = canvas.width() - theme::kTextRight;
  if (line.width() > right - from - kChangeGap) return false;
  line.drawRight(canvas.painter(), {right, kChangeBaseline}, changeInk(canvas, FigureWords::signOf(content.change)));
  return true;
}

// --- A value --------------------------------------------------------------------------------------------------------

void drawSpark(TileCanvas& canvas, const ServiceContent& content, double from) {
  const QList<double> latest = content.numbers.last(std::min(content.numbers.size(), kSparkValues));
  if (latest.size() < 2) return;
  const double right = canvas.width() - theme::kTextRight;
  const double width = std::min(kSparkMost, right - from - kSparkGap);
  if (width < kSparkLeast) return;
  ChartLook look = lookOf(canvas, content, latest);
  look.filled = look.marked = false;
  paintChart(canvas, {right - width, kSparkTop, width, kSparkHeight}, latest, look);
}

void paintValueTile(TileCanvas& canvas, const ServiceContent& content) {
  using namespace theme;
  const bool hasBadge = !content.badge.letters.isEmpty();
  if (hasBadge) badgeBefore(canvas, content);
  const double x = hasBadge ? textAfterBadge(canvas) : kTextLeft;
  const double space = canvas.spaceAfter(x) - (content.state.hasFailed ? kFailureWidth : 0);
  static constexpr std::array words = {TextStyle::Title, TextStyle::BodyStrong};
  const std::span<const TextStyle> styles =
      content.headline.isNumber ? std::span<const TextStyle>(kHeadlineStyles) : std::span<const TextStyle>(words);
  const TextStyle style = fittingStyle(canvas, content.headline, space, styles).value_or(styles.back());
  const bool isLarge = style == TextStyle::Headline || style == TextStyle::Figure17;
  if (!canvas.showsCaption()) {
    const double baseline = TileCanvas::centredBaseline(canvas.line(content.headline.figure, style));
    drawFitting(canvas, content.headline, {x, baseline}, space, inkOf(canvas, content), styles);
    return;
  }
  const double end = drawFitting(canvas, content.headline, {x, isLarge ? kHeadlineBaseline : kTitleBaseline}, space,
                                 inkOf(canvas, content), styles);
  if (isLarge && drawChange(canvas, content, end)) {
    canvas.text(x, kCaptionBaseline, canvas.spaceAfter(x), TextStyle::Caption, content.beside,
                canvas.colors().secondary);
    return;
  }
  if (isLarge) drawSpark(canvas, content, end);
  drawCaption(canvas, content, x, isLarge ? kCaptionBaseline : kTitleCaptionBaseline, canvas.spaceAfter(x));
}

// --- What is done somewhere ------------------------------------------------------------------------------------------

void drawWorkDot(TileCanvas& canvas, Activity activity) {
  const QColor ink = canvas.colors().accent(activity == Activity::Waiting ? Accent::Orange : Accent::Green);
  const QPointF centre(canvas.width() - kWorkDotInset, kWorkDotMiddle);
  canvas.painter().setPen(Qt::NoPen);
  canvas.painter().setBrush(faded(ink, kWorkHalo));
  canvas.painter().drawEllipse(centre, kWorkHaloRadius, kWorkHaloRadius);
  canvas.painter().setBrush(ink);
  canvas.painter().drawEllipse(centre, kWorkDotRadius, kWorkDotRadius);
}

/// The place at which words part into two lines of which each fits; 0 where there is none.
qsizetype partingOf(const TileCanvas& canvas, const QString& words, double space) {
  const auto fits = [&](const QString& part) { return canvas.line(part, TextStyle::BodyStrong).width() <= space; };
  for (qsizetype at = words.lastIndexOf(u' '); at > 0; at = words.lastIndexOf(u' ', at - 1))
    if (fits(words.first(at)) && fits(words.sliced(at + 1))) return at;
  return 0;
}

/// The words for what is done are the value: they take the caption's place before they are shortened.
void paintWorkTile(TileCanvas& canvas, const ServiceContent& content) {
  using namespace theme;
  const bool hasDot = content.activity != Activity::Idle;
  if (hasDot) drawWorkDot(canvas, content.activity);
  badgeBefore(canvas, content);
  const double x = textAfterBadge(canvas);
  const double space = canvas.spaceAfter(x) - (hasDot ? kWorkDotSpace : 0);
  static constexpr std::array styles = {TextStyle::Title, TextStyle::BodyStrong};
  const QString& words = content.headline.figure;
  const QColor& ink = canvas.colors().primary;
  const bool fits = fittingStyle(canvas, content.headline, space, styles).has_value();
  const qsizetype parting = fits || !canvas.showsCaption() ? 0 : partingOf(canvas, words, space);
  if (parting > 0) {
    canvas.text(x, kTitleBaseline, space, TextStyle::BodyStrong, words.first(parting), ink);
    canvas.text(x, kTitleCaptionBaseline, canvas.spaceAfter(x), TextStyle::BodyStrong, words.sliced(parting + 1), ink);
    return;
  }
  const double baseline =
      canvas.showsCaption() ? kTitleBaseline : TileCanvas::centredBaseline(canvas.line(words, TextStyle::Title));
  drawFitting(canvas, content.headline, {x, baseline}, space, ink, styles);
  if (canvas.showsCaption()) drawCaption(canvas, content, x, kTitleCaptionBaseline, canvas.spaceAfter(x));
}

// --- A series -------------------------------------------------------------------------------------------------------

void paintSeriesTile(TileCanvas& canvas, const ServiceContent& content) {
  using namespace theme;
  static constexpr std::array styles = {TextStyle::Timer, TextStyle::Figure17, TextStyle::Title,
                                        TextStyle::ListRowStrong};
  badgeAt(canvas, content, {kSmallBadgePlace + kSmallBadge / 2, kSmallBadgePlace + kSmallBadge / 2}, kSmallBadge,
          kSmallBadgeCorner);
  const double right = canvas.width() - kTextRight;
  const double end = drawFitting(canvas, content.headline, {kTextLeft, kSeriesBaseline},
                                 right - kSeriesLeast - kSeriesGap - kTextLeft, inkOf(canvas, content), styles);
  const double left = std::max(end, kSmallBadgePlace + kSmallBadge) + kSeriesGap;
  const QRectF box(left, kSeriesTop, right - left, kSeriesFoot - kSeriesTop);
  switch (content.shape) {
    case ServiceShape::Bars:
      return paintServiceBars(canvas, box, content.numbers);
    case ServiceShape::Squares:
      return paintServiceSquares(canvas, box, content.numbers);
    default: {
      const double width = std::min(box.width(), kLineWidest);
      paintChart(canvas, {right - width, kLineTop, width, kLineTall}, content.numbers,
                 lookOf(canvas, content, content.numbers));
    }
  }
}

// --- Figures --------------------------------------------------------------------------------------------------------

struct Columns {
  QList<double> widths;
  TextStyle style = TextStyle::Title;
};

/// As many figures as fit whole with their names, in the largest style in which they do.
Columns columnsOf(const TileCanvas& canvas, const QList<ServiceMetric>& figures, double space) {
  static constexpr std::array styles = {TextStyle::Headline, TextStyle::Figure17, TextStyle::Title};
  for (qsizetype count = figures.size(); count > 1; --count) {
    const double forAll = space - kColumnGap * static_cast<double>(count - 1);
    for (const TextStyle style : styles) {
      Columns columns{{}, style};
      double taken = 0;
      for (const ServiceMetric& figure : figures.first(count)) {
        columns.widths << std::max(widthOf(canvas, FigureWords::of(figure.value), style),
                                   canvas.line(figure.label, TextStyle::Caption).width());
        taken += columns.widths.last();
      }
      if (taken > forAll) continue;
      for (double& width : columns.widths) width += (forAll - taken) / static_cast<double>(count);
      return columns;
    }
  }
  return {};
}

void paintFiguresTile(TileCanvas& canvas, const ServiceContent& content) {
  using namespace theme;
  double left = textAfterBadge(canvas);
  const Columns columns = columnsOf(canvas, content.figures, canvas.spaceAfter(left));
  if (columns.widths.isEmpty()) return paintValueTile(canvas, content);
  badgeBefore(canvas, content);
  for (qsizetype i = 0; i < columns.widths.size(); ++i) {
    if (i > 0)
      canvas.painter().fillRect(
          canvas.snapped({left - kColumnPadding, kTileMiddle - kDividerHeight / 2, 1, kDividerHeight}),
          canvas.colors().hairline);
    const FigureWords words = FigureWords::of(content.figures[i].value);
    canvas.figure(left, kHeadlineBaseline, columns.style, words.figure, words.unit, inkOf(canvas, content));
    canvas.text(left, kCaptionBaseline, columns.widths[i] + 1, TextStyle::Caption, content.figures[i].label,
                canvas.colors().secondary);
    left += columns.widths[i] + kColumnGap;
  }
}

// --- Allowances -----------------------------------------------------------------------------------------------------

QColor usageInk(const TileCanvas& canvas, const UsageBar& bar) {
  return bar.isAlarming ? canvas.colors().accent(Accent::Red) : canvas.accent();
}

void drawUsage(TileCanvas& canvas, const UsageBar& bar, double x, double baseline) {
  const double right = canvas.width() - theme::kTextRight;
  const TextLine percent = canvas.line(bar.percent, TextStyle::ListRowStrong);
  percent.drawRight(canvas.painter(), {right, baseline}, canvas.colors().primary);
  canvas.text(x, baseline, right - x - percent.width() - kUsageGap, TextStyle::ListRow, bar.label,
              canvas.colors().secondary);
  const QRectF track(x, baseline + kUsageBarBelow, right - x, kUsageBar);
  drawRounded(canvas.painter(), track, kUsageBar / 2, canvas.colors().track);
  if (bar.share <= 0) return;
  QRectF part = track;
  part.setWidth(std::max(kUsageBar, track.width() * bar.share));
  drawRounded(canvas.painter(), part, kUsageBar / 2, usageInk(canvas, bar));
}

void paintWindowsTile(TileCanvas& canvas, const ServiceContent& content) {
  badgeBefore(canvas, content);
  const double x = textAfterBadge(canvas);
  if (content.bars.size() > 1 && canvas.showsLastRow()) {
    for (qsizetype i = 0; i < content.bars.size(); ++i)
      drawUsage(canvas, content.bars[i], x, kUsageFirst + kUsagePitch * static_cast<double>(i));
    return;
  }
  const bool alone = content.bars.size() == 1 && canvas.showsLastRow();
  drawUsage(canvas, content.bars.first(), x, alone ? kUsageAlone : kUsageAlone + kUsageBarBelow);
  if (alone) drawCaption(canvas, content, x, kUsageCaption, canvas.spaceAfter(x));
}

void paintGaugeTile(TileCanvas& canvas, const ServiceContent& content) {
  const UsageBar& bar = content.bars.first();
  const QPointF centre(kGaugeMiddle, kGaugeHeight);
  canvas.arc(centre, kGaugeRadius, kGaugeStroke, kGaugeBegin, kGaugeSweep, canvas.colors().track);
  const QColor ink = content.isDimmed ? faded(usageInk(canvas, bar), kDimmed) : usageInk(canvas, bar);
  if (bar.share > 0) canvas.arc(centre, kGaugeRadius, kGaugeStroke, kGaugeBegin, kGaugeSweep * bar.share, ink);
  const FigureWords words = FigureWords::of(bar.percent);
  static constexpr std::array styles = {TextStyle::Gauge, TextStyle::Title, TextStyle::ListRowStrong};
  const TextStyle style = fittingStyle(canvas, words, kGaugeInside, styles).value_or(styles.back());
  canvas.figure(centre.x() - widthOf(canvas, words, style) / 2, kGaugeFigureBaseline, style, words.figure, words.unit,
                inkOf(canvas, content));
  const double space = canvas.width() - kGaugeText - kGaugeEnd;
  static constexpr std::array names = {TextStyle::Title, TextStyle::BodyStrong, TextStyle::TabLabel};
  const bool both = canvas.showsCaption();
  const TextLine name =
      canvas.line(content.headline.figure, fittingStyle(canvas, content.headline, space, names).value_or(names.back()));
  name.elided(space, Elide::End)
      .draw(canvas.painter(), {kGaugeText, both ? theme::kTitleBaseline : TileCanvas::centredBaseline(name)},
            canvas.colors().primary);
  if (both) drawCaption(canvas, content, kGaugeText, theme::kTitleCaptionBaseline, space);
}

// --- A list ---------------------------------------------------------------------------------------------------------

void paintListTile(TileCanvas& canvas, const ServiceContent& content) {
  const QList<double> baselines = canvas.rowBaselines(content.rows.size());
  for (qsizetype i = 0; i < baselines.size(); ++i) {
    const ServiceMetric& row = content.rows[i];
    canvas.row(theme::kTextLeft, baselines[i], row.label, TextStyle::ListRowStrong, row.value,
               changeInk(canvas, FigureWords::signOf(row.value)));
  }
}

void paintShape(TileCanvas& canvas, const ServiceContent& content) {
  const bool isBare = !canvas.showsCaption();
  switch (content.shape) {
    case ServiceShape::Line:
    case ServiceShape::Bars:
    case ServiceShape::Squares:
      return isBare ? paintValueTile(canvas, content) : paintSeriesTile(canvas, content);
    case ServiceShape::Figures:
      return isBare ? paintValueTile(canvas, content) : paintFiguresTile(canvas, content);
    case ServiceShape::Windows:
      return paintWindowsTile(canvas, content);
    case ServiceShape::Gauge:
      return paintGaugeTile(canvas, content);
    case ServiceShape::List:
      return paintListTile(canvas, content);
    case ServiceShape::Work:
      return paintWorkTile(canvas, content);
    case ServiceShape::Value:
    case ServiceShape::Quote:
      return paintValueTile(canvas, content);
  }
}

}  // namespace

void paint(TileCanvas& canvas, const ServiceContent& content) {
  paintShape(canvas, content);
  if (content.state.isLoading) paintLoading(canvas);
  if (content.state.hasFailed) paintFailure(canvas);
}

}  // namespace tarnwick
