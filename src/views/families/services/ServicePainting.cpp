#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "views/families/services/ServiceFitting.h"
#include "views/families/services/ServiceMarkets.h"
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
constexpr double kChangeBaseline = 30;
constexpr double kChangeGap = 6;

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

void drawCaption(TileCanvas& canvas, const ServiceContent& content, double x, double baseline, double space) {
  const TextLine line = Typography::fitting(content.captions, TextStyle::Caption, space, Elide::End, canvas.scale());
  line.draw(canvas.painter(), {x, baseline}, changeInk(canvas, signOfCaption(content)));
}

/// Draws a large figure with what it changed by at its right, and below what it is. Returns whether there is space for
/// that.
bool paintChanged(TileCanvas& canvas, const ServiceContent& content, double x, double space) {
  static constexpr std::array styles = {TextStyle::Headline, TextStyle::Figure17};
  const TextLine change = canvas.line(content.change, TextStyle::TabLabel);
  const double left = space - change.width() - kChangeGap;
  // Of a price the cents matter more than its size.
  std::optional<FittedFigure> fitted;
  if (content.isQuote) fitted = fitting(canvas, {content.headline}, left, styles);
  if (!fitted) fitted = fitting(canvas, content.ways(), left, styles);
  if (!fitted) return false;
  canvas.figure(x, theme::kHeadlineBaseline, fitted->style, fitted->words.figure, fitted->words.unit,
                inkOf(canvas, content));
  change.drawRight(canvas.painter(), {canvas.width() - theme::kTextRight, kChangeBaseline},
                   changeInk(canvas, FigureWords::signOf(content.change)));
  canvas.text(x, theme::kCaptionBaseline, space, TextStyle::Caption, content.beside, canvas.colors().secondary);
  return true;
}

// --- A value --------------------------------------------------------------------------------------------------------

void drawSpark(TileCanvas& canvas, const ServiceContent& content, double from) {
  const QList<double> latest = content.numbers.last(std::min(content.numbers.size(), kSparkValues));
  if (latest.size() < 2) return;
  const double right = canvas.width() - theme::kTextRight;
  const double width = std::min(kSparkMost, right - from - kSparkGap);
  if (width < kSparkLeast) return;
  ChartLook look = seriesLook(canvas, content, latest);
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
  const std::optional<FittedFigure> fitted = fitting(canvas, content.ways(), space, styles);
  const TextStyle style = fitted ? fitted->style : styles.back();
  const bool isLarge = style == TextStyle::Headline || style == TextStyle::Figure17;
  if (!canvas.showsCaption()) {
    const double baseline = TileCanvas::centredBaseline(canvas.line(content.headline.figure, style));
    drawFitting(canvas, content.ways(), {x, baseline}, space, inkOf(canvas, content), styles);
    return;
  }
  if (!content.change.isEmpty() && paintChanged(canvas, content, x, space)) return;
  const double end = drawFitting(canvas, content.ways(), {x, isLarge ? kHeadlineBaseline : kTitleBaseline}, space,
                                 inkOf(canvas, content), styles);
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
  const bool fits = fitting(canvas, {content.headline}, space, styles).has_value();
  const qsizetype parting = fits || !canvas.showsCaption() ? 0 : partingOf(canvas, words, space);
  if (parting > 0) {
    canvas.text(x, kTitleBaseline, space, TextStyle::BodyStrong, words.first(parting), ink);
    canvas.text(x, kTitleCaptionBaseline, canvas.spaceAfter(x), TextStyle::BodyStrong, words.sliced(parting + 1), ink);
    return;
  }
  const double baseline =
      canvas.showsCaption() ? kTitleBaseline : TileCanvas::centredBaseline(canvas.line(words, TextStyle::Title));
  drawFitting(canvas, {content.headline}, {x, baseline}, space, ink, styles);
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
  const double end = drawFitting(canvas, content.ways(), {kTextLeft, kSeriesBaseline},
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
                 seriesLook(canvas, content, content.numbers));
    }
  }
}

// --- Figures --------------------------------------------------------------------------------------------------------

struct Column {
  QString label;
  FigureWords words;
  double width = 0;
};

struct Columns {
  QList<Column> all;
  TextStyle style = TextStyle::Title;
};

/// As many figures as fit whole with their names, in the largest style in which they do; of those too long for that in
/// a shorter way.
Columns columnsOf(const TileCanvas& canvas, const QList<ServiceFigure>& figures, double space) {
  static constexpr std::array styles = {TextStyle::Headline, TextStyle::Figure17, TextStyle::Title};
  for (qsizetype count = figures.size(); count > 1; --count) {
    const double forAll = space - kColumnGap * static_cast<double>(count - 1);
    for (const TextStyle style : styles) {
      for (const bool isShort : {false, true}) {
        Columns columns{{}, style};
        double taken = 0;
        for (const ServiceFigure& figure : figures.first(count)) {
          const FigureWords& words = isShort ? figure.ways.last() : figure.ways.first();
          const double width =
              std::max(widthOf(canvas, words, style), canvas.line(figure.label, TextStyle::Caption).width());
          columns.all << Column{figure.label, words, width};
          taken += width;
        }
        if (taken > forAll) continue;
        for (Column& column : columns.all) column.width += (forAll - taken) / static_cast<double>(count);
        return columns;
      }
    }
  }
  return {};
}

void paintFiguresTile(TileCanvas& canvas, const ServiceContent& content) {
  using namespace theme;
  double left = textAfterBadge(canvas);
  const Columns columns = columnsOf(canvas, content.figures, canvas.spaceAfter(left));
  if (columns.all.isEmpty()) return paintValueTile(canvas, content);
  badgeBefore(canvas, content);
  for (const Column& column : columns.all) {
    if (&column != &columns.all.first())
      canvas.painter().fillRect(
          canvas.snapped({left - kColumnPadding, kTileMiddle - kDividerHeight / 2, 1, kDividerHeight}),
          canvas.colors().hairline);
    canvas.figure(left, kHeadlineBaseline, columns.style, column.words.figure, column.words.unit,
                  inkOf(canvas, content));
    canvas.text(left, kCaptionBaseline, column.width + 1, TextStyle::Caption, column.label, canvas.colors().secondary);
    left += column.width + kColumnGap;
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
  const auto fitted = fitting(canvas, {words}, kGaugeInside, styles);
  const TextStyle style = fitted ? fitted->style : styles.back();
  canvas.figure(centre.x() - widthOf(canvas, words, style) / 2, kGaugeFigureBaseline, style, words.figure, words.unit,
                inkOf(canvas, content));
  const double space = canvas.width() - kGaugeText - kGaugeEnd;
  static constexpr std::array names = {TextStyle::Title, TextStyle::BodyStrong, TextStyle::TabLabel};
  const bool both = canvas.showsCaption();
  const auto whole = fitting(canvas, {content.headline}, space, names);
  const TextLine name = canvas.line(content.headline.figure, whole ? whole->style : names.back());
  name.elided(space, Elide::End)
      .draw(canvas.painter(), {kGaugeText, both ? theme::kTitleBaseline : TileCanvas::centredBaseline(name)},
            canvas.colors().primary);
  if (both) drawCaption(canvas, content, kGaugeText, theme::kTitleCaptionBaseline, space);
}

void paintShape(TileCanvas& canvas, const ServiceContent& content) {
  const bool isBare = !canvas.showsCaption();
  switch (content.shape) {
    case ServiceShape::Line:
      if (content.isQuote && !isBare) return paintQuoteSeries(canvas, content);
      [[fallthrough]];
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
      return paintWatchlist(canvas, content);
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
