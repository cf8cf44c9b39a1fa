#include "views/families/system/MetricTiles.h"

#include <algorithm>
#include <cmath>

#include "base/LocalFigures.h"
#include "views/families/system/GaugeTiles.h"
#include "views/theme/Glass.h"
#include "views/tiles/ChartPainting.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/FileWords.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

const QString kDash = u"–"_s;

std::optional<int> percentOf(double value) {
  if (!std::isfinite(value)) return std::nullopt;
  return static_cast<int>(std::lround(std::clamp(value, 0.0, 100.0)));
}

QString withSign(const std::optional<int>& percent) { return percent ? LocalFigures::percent(*percent) : kDash; }

// Charts are at the right.
constexpr double kChartWidth = 76;
constexpr double kChartTop = 17;
constexpr double kChartHeight = 28;

constexpr double kLeastChart = 48;
constexpr double kBeforeChart = 12;

/// It leaves space for what is before it.
QRectF chartBox(const TileCanvas& canvas, double textEnd) {
  const double right = canvas.width() - theme::kTextRight;
  const double width = std::clamp(right - textEnd - kBeforeChart, kLeastChart, kChartWidth);
  return {right - width, kChartTop, width, kChartHeight};
}

}  // namespace

// --- Battery --------------------------------------------------------------------------------------------------------

namespace {

constexpr double kBatteryWidth = 40;
constexpr double kBatteryHeight = 19;
constexpr double kBatteryTop = 13;
constexpr double kBatteryCorner = 6;
constexpr double kBatteryInset = 2.5;
constexpr double kBatteryFillCorner = 4;
constexpr double kNubGap = 1.5;
constexpr double kNubWidth = 2.5;
constexpr double kNubHeight = 7;
constexpr double kBatteryBaseline = 49.5;
/// In the smallest docks the figure is larger beside everything else.
constexpr double kBareBatteryTop = 9;
constexpr double kBareBatteryBaseline = 53;
constexpr double kBoltHalf = 7.5;  ///< Of its height; its points follow from it.
constexpr int kLow = 20;

void paintBolt(QPainter& painter, QPointF middle, const QColor& ink) {
  const auto at = [&](double x, double y) { return middle + QPointF(x, y) * kBoltHalf; };
  painter.setPen(Qt::NoPen);
  painter.setBrush(ink);
  painter.drawPolygon(
      QPolygonF({at(0.2, -1), at(-0.6, 0.2), at(-0.05, 0.2), at(-0.2, 1), at(0.6, -0.25), at(0.05, -0.25)}));
}

void paintCell(TileCanvas& canvas, const BatteryContent& content, const QRectF& body) {
  QPainter& painter = canvas.painter();
  const Palette& colors = canvas.colors();
  drawRounded(painter, body, kBatteryCorner, colors.track);
  const QRectF nub(body.right() + kNubGap, body.center().y() - kNubHeight / 2, kNubWidth, kNubHeight);
  drawRounded(painter, nub, kNubWidth / 2, colors.track);
  if (const int percent = content.percent.value_or(0); percent > 0) {
    QRectF fill = body.adjusted(kBatteryInset, kBatteryInset, -kBatteryInset, -kBatteryInset);
    fill.setWidth(std::max(kBatteryFillCorner, fill.width() * percent / 100));
    drawRounded(painter, fill, std::min(kBatteryFillCorner, fill.width() / 2),
                percent < kLow && !content.plugged ? colors.accent(Accent::Red) : canvas.accent());
  }
  if (content.charging) paintBolt(painter, body.center(), colors.primary);
}

}  // namespace

BatteryContent makeBattery(const TileRequest& request) {
  const auto& metrics = request.sources.metrics;
  if (!metrics) return {.percent = std::nullopt, .word = kDash};
  if (!metrics->battery) return {.percent = std::nullopt, .word = TileWords::tr("None")};
  const bool charging = metrics->batteryFlow == BatteryFlow::Charging;
  return {percentOf(*metrics->battery), kDash, charging, charging || metrics->batteryFlow == BatteryFlow::Held};
}

TileText describe(const BatteryContent& content, const QString& name) {
  if (!content.percent) return {name, content.word == kDash ? QString() : content.word};
  const QString charge = withSign(content.percent);
  return {name, content.charging ? charge + u", "_s + TileWords::tr("Charging") : charge};
}

void paint(TileCanvas& canvas, const BatteryContent& content) {
  const Palette& colors = canvas.colors();
  const double whole = kBatteryWidth + kNubGap + kNubWidth;
  const double top = canvas.showsCaption() ? kBatteryTop : kBareBatteryTop;
  const double baseline = canvas.showsCaption() ? kBatteryBaseline : kBareBatteryBaseline;
  const QRectF body((canvas.width() - whole) / 2, top, kBatteryWidth, kBatteryHeight);
  canvas.unmirrored(canvas.width() / 2, [&] { paintCell(canvas, content, body); });
  if (!content.percent) {
    canvas.centredText(baseline, TextStyle::Caption, content.word, colors.secondary);
    return;
  }
  const QString figure = LocalFigures::number(*content.percent);
  const QString sign = LocalFigures::percentSign();
  const double width = canvas.line(figure, TextStyle::Title).width() + 2 +
                       TextLine::unit(sign, TextStyle::Title, canvas.scale()).width();
  canvas.figure((canvas.width() - width) / 2, baseline, TextStyle::Title, figure, sign);
}

// --- One figure and its history -------------------------------------------------------------------------------------

namespace {

/// Little work looks little, but is seen.
constexpr double kLeastCpuTop = 25;
/// A processor that stands still has a line in the middle of so many degrees.
constexpr double kLeastDegrees = 20;
constexpr double kDegreeSpace = 4;

QString degrees(const std::optional<double>& celsius) {
  if (!celsius || !std::isfinite(*celsius)) return kDash;
  const auto whole = std::lround(*celsius);
  return (whole < 0 ? QString(u'−') : QString()) + LocalFigures::number(std::abs(whole)) + u'°';
}

}  // namespace

MetricChartContent makeCpuChart(const TileRequest& request) {
  MetricChartContent content{kDash, {}, TileWords::tr("CPU"), request.sources.cpuHistory};
  content.high = std::clamp(highestOf(content.history) * kChartHeadroom, kLeastCpuTop, 100.0);
  if (!request.sources.metrics) return content;
  if (const auto percent = percentOf(request.sources.metrics->cpu)) {
    content.figure = LocalFigures::number(*percent, request.sources.locale);
    content.unit = LocalFigures::percentSign(request.sources.locale);
    content.isAlarming = *percent > kAlarmingPercent;
  }
  return content;
}

MetricChartContent makeMemoryChart(const TileRequest& request) {
  MetricChartContent content{kDash, {}, TileWords::tr("RAM"), request.sources.memoryHistory};
  const auto& metrics = request.sources.metrics;
  if (!metrics) return content;
  if (const auto percent = percentOf(metrics->memory)) {
    content.figure = LocalFigures::number(*percent, request.sources.locale);
    content.unit = LocalFigures::percentSign(request.sources.locale);
    content.isAlarming = *percent > kAlarmingPercent;
  }
  if (metrics->memoryTotal > 0)
    content.caption = memoryWords(request.sources.locale, metrics->memoryUsed, metrics->memoryTotal);
  return content;
}

MetricChartContent makeTemperatureChart(const TileRequest& request) {
  const ReadingFacts& readings = request.sources.readings;
  MetricChartContent content{degrees(readings.celsius), {}, TileWords::tr("CPU core"), readings.celsiusHistory};
  if (content.history.isEmpty()) return content;
  const auto [least, most] = std::ranges::minmax(content.history);
  const double space = std::max(kDegreeSpace, (kLeastDegrees - (most - least)) / 2);
  content.low = least - space;
  content.high = most + space;
  return content;
}

TileText describe(const MetricChartContent& content, const QString& name) {
  if (content.figure == kDash) return {name, {}};
  const QString figure = content.figure + content.unit;
  return {name, content.caption.contains(u' ') ? figure + u", "_s + content.caption : figure};
}

void paint(TileCanvas& canvas, const MetricChartContent& content) {
  using namespace theme;
  const bool caption = canvas.showsCaption();
  const double words = caption ? canvas.line(content.caption, TextStyle::Caption).width() : 0;
  const QRectF box = chartBox(canvas, kTextLeft + words);
  const QColor line = content.isAlarming ? canvas.colors().accent(Accent::Red) : canvas.accent();
  paintChart(canvas, box, content.history, {line, content.low, content.high});
  const double baseline =
      caption ? kHeadlineBaseline : TileCanvas::centredBaseline(canvas.line(content.figure, TextStyle::Headline));
  const QColor ink = content.figure == kDash ? canvas.colors().tertiary : canvas.colors().primary;
  canvas.figure(kTextLeft, baseline, TextStyle::Headline, content.figure, content.unit, ink);
  if (caption)
    canvas.text(kTextLeft, kCaptionBaseline, box.left() - kTextLeft - 2, TextStyle::Caption, content.caption,
                canvas.colors().secondary);
}

// --- Processor and memory -------------------------------------------------------------------------------------------

namespace {

constexpr double kPairChartLeft = 91;
constexpr double kPairChartTop = 15;
constexpr double kPairChartHeight = 32;
constexpr double kPairDot = 3;
constexpr double kPairLabel = 23;
constexpr double kPairValueRight = 82;
constexpr double kPairFirst = 27;
constexpr double kPairSecond = 45;
constexpr double kPairGap = 4;
constexpr int kMostPercent = 100;

/// A percentage with its sign in the largest letters in which it is at most `space` wide; where it is wider in all of
/// them, the number alone.
TextLine pairValue(const TileCanvas& canvas, const std::optional<int>& percent, double space) {
  const TextLine whole = canvas.line(withSign(percent), TextStyle::Title);
  if (whole.width() <= space || !percent) return whole;
  for (const TextStyle style : {TextStyle::ListRowStrong, TextStyle::TabLabel})
    if (const TextLine small = canvas.line(withSign(percent), style); small.width() <= space) return small;
  return canvas.line(LocalFigures::number(*percent), TextStyle::ListRowStrong);
}

void paintPairRow(TileCanvas& canvas, double baseline, Accent accent, const QString& label,
                  const std::optional<int>& percent) {
  const TextLine words = canvas.line(label, TextStyle::Body);
  const double space = kPairValueRight - kPairLabel - words.width() - kPairGap;
  // Half a word says nothing, and the dot shows which is which. The label is there for every value or for none.
  const bool labelled = pairValue(canvas, kMostPercent, space).width() <= space;
  const TextLine value = pairValue(canvas, percent, labelled ? space : kPairValueRight - kPairLabel);
  const double dotHeight = canvas.line(withSign(percent), TextStyle::Title).capHeight() / 2;
  canvas.painter().setPen(Qt::NoPen);
  canvas.painter().setBrush(canvas.colors().accent(accent));
  canvas.painter().drawEllipse(QPointF(theme::kTextLeft + kPairDot, baseline - dotHeight), kPairDot, kPairDot);
  if (!labelled) {
    value.draw(canvas.painter(), {kPairLabel, baseline}, canvas.colors().primary);
    return;
  }
  words.draw(canvas.painter(), {kPairLabel, baseline}, canvas.colors().secondary);
  value.drawRight(canvas.painter(), {kPairValueRight, baseline}, canvas.colors().primary);
}

}  // namespace

SystemChartContent makeSystemChart(const TileRequest& request) {
  const auto& metrics = request.sources.metrics;
  SystemChartContent content;
  content.cpuHistory = request.sources.cpuHistory;
  content.memoryHistory = request.sources.memoryHistory;
  if (!metrics) return content;
  content.cpu = percentOf(metrics->cpu);
  content.memory = percentOf(metrics->memory);
  return content;
}

TileText describe(const SystemChartContent& content, const QString& name) {
  if (!content.cpu && !content.memory) return {name, {}};
  return {name, TileWords::tr("CPU %1, RAM %2").arg(withSign(content.cpu), withSign(content.memory))};
}

void paint(TileCanvas& canvas, const SystemChartContent& content) {
  const QRectF box(kPairChartLeft, kPairChartTop, canvas.width() - theme::kTextRight - kPairChartLeft,
                   kPairChartHeight);
  ChartLook look{canvas.colors().accent(Accent::Green)};
  look.filled = look.marked = false;
  look.high = std::clamp(std::max(highestOf(content.cpuHistory), highestOf(content.memoryHistory)) * kChartHeadroom,
                         kLeastCpuTop, 100.0);
  paintChart(canvas, box, content.cpuHistory, look);
  look.color = canvas.colors().accent(Accent::Purple);
  paintChart(canvas, box, content.memoryHistory, look);
  paintPairRow(canvas, kPairFirst, Accent::Green, TileWords::tr("CPU"), content.cpu);
  paintPairRow(canvas, kPairSecond, Accent::Purple, TileWords::tr("RAM"), content.memory);
}

// --- One figure -----------------------------------------------------------------------------------------------------

namespace {

FigureContent speedFigure(const TileRequest& request, double MetricsSnapshot::*speed, const QString& symbol,
                          const QString& caption) {
  FigureContent content{symbol, kDash, {}, caption};
  if (!request.sources.metrics) return content;
  const SpeedWords words = speedWords(request.sources.locale, (*request.sources.metrics).*speed);
  content.figure = words.number;
  content.unit = words.unit;
  return content;
}

}  // namespace

FigureContent makeDownload(const TileRequest& request) {
  return speedFigure(request, &MetricsSnapshot::download, u"arrow.down"_s, TileWords::tr("Download"));
}

FigureContent makeUpload(const TileRequest& request) {
  return speedFigure(request, &MetricsSnapshot::upload, u"arrow.up"_s, TileWords::tr("Upload"));
}

FigureContent makeTemperature(const TileRequest& request) {
  return {request.definition.symbol, degrees(request.sources.readings.celsius), {}, TileWords::tr("CPU"), true};
}

}  // namespace tarnwick
