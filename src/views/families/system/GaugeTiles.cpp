#include "views/families/system/GaugeTiles.h"

#include <algorithm>
#include <cmath>

#include "base/LocalFigures.h"
#include "views/tiles/TileCanvas.h"
#include "widgets/TileWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kBegin = -135;
constexpr double kSweep = 270;
constexpr double kRadius = 24;
constexpr double kStroke = 5;
constexpr double kCentre = 33.5;
constexpr double kFigureBaseline = 39.5;
constexpr double kLabelBaseline = 57.5;
constexpr double kLabelSpace = 27;
/// Below this scale the least size of a text makes the label run into the ends of the arc.
constexpr double kLabelScale = 0.8;

GaugeContent gauge(const TileRequest& request, double MetricsSnapshot::*share, const QString& label) {
  GaugeContent content;
  content.label = label;
  if (!request.sources.metrics) return content;
  const double value = (*request.sources.metrics).*share;
  if (std::isfinite(value)) content.percent = static_cast<int>(std::lround(std::clamp(value, 0.0, 100.0)));
  return content;
}

}  // namespace

GaugeContent makeCpuGauge(const TileRequest& request) {
  return gauge(request, &MetricsSnapshot::cpu, TileWords::tr("CPU"));
}

GaugeContent makeMemoryGauge(const TileRequest& request) {
  return gauge(request, &MetricsSnapshot::memory, TileWords::tr("RAM"));
}

GaugeContent makeStorageGauge(const TileRequest& request) {
  return gauge(request, &MetricsSnapshot::disk, TileWords::tr("DISK"));
}

TileText describe(const GaugeContent& content, const QString& name) {
  return {name, content.percent ? LocalFigures::percent(*content.percent) : QString()};
}

void paint(TileCanvas& canvas, const GaugeContent& content) {
  const QPointF centre(canvas.width() / 2, kCentre);
  canvas.arc(centre, kRadius, kStroke, kBegin, kSweep, canvas.colors().track);
  const int percent = content.percent.value_or(0);
  if (percent > 0) {
    const QColor color = percent > kAlarmingPercent ? canvas.colors().accent(Accent::Red) : canvas.accent();
    canvas.arc(centre, kRadius, kStroke, kBegin, kSweep * percent / 100, color);
  }
  const TextLine figure = canvas.line(content.percent ? LocalFigures::number(percent) : u"–"_s, TextStyle::Gauge);
  const QColor ink = content.percent ? canvas.colors().primary : canvas.colors().tertiary;
  figure.drawCentred(canvas.painter(), {centre.x(), kFigureBaseline}, ink);
  if (canvas.scale() >= kLabelScale)
    canvas.line(content.label, TextStyle::GaugeLabel)
        .elided(kLabelSpace, Elide::End)
        .drawCentred(canvas.painter(), {centre.x(), kLabelBaseline}, canvas.colors().secondary);
}

}  // namespace tarnwick
