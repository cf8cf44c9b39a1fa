#include "views/families/system/NetworkTiles.h"

#include <algorithm>

#include "views/theme/Glass.h"
#include "views/tiles/ChartPainting.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kArrowCentre = 20;
constexpr double kArrowSize = 16;
constexpr double kSpeedLeft = 35;
constexpr double kSpeedFirst = 26;
constexpr double kSpeedSecond = 49;
constexpr double kSmallArrowCentre = 17;
constexpr double kSmallArrow = 12;
constexpr double kSmallSpeedLeft = 26;
constexpr double kSmallFirst = 27.5;
constexpr double kSmallSecond = 44.5;
constexpr double kSmallUnitGap = 5;
constexpr double kTrafficLeft = 84;
constexpr double kTrafficTop = 13;
constexpr double kTrafficMiddle = 35;
constexpr double kTrafficFoot = 52;
/// Bytes per second: what is less looks like nothing.
constexpr double kLeastTraffic = 20e3;

void paintArrow(TileCanvas& canvas, double x, double baseline, double capHeight, double size, bool down) {
  canvas.symbol(down ? u"arrow.down"_s : u"arrow.up"_s, {x, baseline - capHeight / 2}, size,
                down ? canvas.accent() : canvas.colors().secondary);
}

void paintSpeed(TileCanvas& canvas, double baseline, const std::optional<SpeedWords>& speed, bool down) {
  const TextLine line = canvas.line(speed ? speed->number : u"–"_s, TextStyle::Figure17);
  paintArrow(canvas, kArrowCentre, baseline, line.capHeight(), kArrowSize, down);
  const QColor ink = speed ? canvas.colors().primary : canvas.colors().tertiary;
  canvas.figure(kSpeedLeft, baseline, TextStyle::Figure17, line.text(), speed ? speed->unit : QString(), ink);
}

/// The unit is written once, behind the longer figure, where there is space for it.
void paintSmallSpeeds(TileCanvas& canvas, const NetworkContent& content) {
  double end = 0;
  for (const bool down : {true, false}) {
    const auto& speed = down ? content.download : content.upload;
    const double baseline = down ? kSmallFirst : kSmallSecond;
    const TextLine line = canvas.line(speed ? speed->number : u"–"_s, TextStyle::Body);
    paintArrow(canvas, kSmallArrowCentre, baseline, line.capHeight(), kSmallArrow, down);
    line.draw(canvas.painter(), {kSmallSpeedLeft, baseline}, canvas.colors().primary);
    end = kSmallSpeedLeft + line.width();
  }
  if (!content.upload) return;
  const TextLine unit = canvas.line(content.upload->unit, TextStyle::Caption);
  if (end + kSmallUnitGap + unit.width() <= kTrafficLeft - 2)
    unit.draw(canvas.painter(), {end + kSmallUnitGap, kSmallSecond}, canvas.colors().secondary);
}

void paintTraffic(TileCanvas& canvas, const NetworkContent& content) {
  const double right = canvas.width() - theme::kTextRight;
  ChartLook look{canvas.accent()};
  look.high = std::max(kLeastTraffic, highestOf(content.downloadHistory) * kChartHeadroom);
  paintChart(canvas, QRectF(QPointF(kTrafficLeft, kTrafficTop), QPointF(right, kTrafficMiddle)),
             content.downloadHistory, look);
  const double line = hairline(canvas.painter());
  canvas.painter().fillRect(canvas.snapped(QRectF(kTrafficLeft, kTrafficMiddle, right - kTrafficLeft, line)),
                            canvas.colors().hairline);
  look.color = canvas.colors().accent(Accent::Blue);
  look.high = std::max(kLeastTraffic, highestOf(content.uploadHistory) * kChartHeadroom);
  look.hanging = true;
  look.marked = false;
  paintChart(canvas, QRectF(QPointF(kTrafficLeft, kTrafficMiddle + 1), QPointF(right, kTrafficFoot)),
             content.uploadHistory, look);
}

}  // namespace

NetworkContent makeNetwork(const TileRequest& request) {
  NetworkContent content;
  if (const auto& metrics = request.sources.metrics) {
    content.download = speedWords(request.sources.locale, metrics->download);
    content.upload = speedWords(request.sources.locale, metrics->upload);
  }
  return content;
}

NetworkContent makeNetworkChart(const TileRequest& request) {
  NetworkContent content;
  content.chart = true;
  content.downloadHistory = request.sources.downloadHistory;
  content.uploadHistory = request.sources.uploadHistory;
  if (const auto& metrics = request.sources.metrics) {
    content.download = speedWords(request.sources.locale, metrics->download, metrics->upload);
    content.upload = speedWords(request.sources.locale, metrics->upload, metrics->download);
  }
  return content;
}

TileText describe(const NetworkContent& content, const QString& name) {
  if (!content.download || !content.upload) return {name, {}};
  return {name,
          TileWords::tr("download %1 %2, upload %3 %4")
              .arg(content.download->number, content.download->unit, content.upload->number, content.upload->unit)};
}

void paint(TileCanvas& canvas, const NetworkContent& content) {
  if (content.chart) {
    paintTraffic(canvas, content);
    paintSmallSpeeds(canvas, content);
    return;
  }
  paintSpeed(canvas, kSpeedFirst, content.download, true);
  paintSpeed(canvas, kSpeedSecond, content.upload, false);
}

}  // namespace tarnwick
