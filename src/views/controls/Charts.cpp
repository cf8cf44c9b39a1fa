#include "views/controls/Charts.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "views/controls/ControlTheme.h"
#include "views/controls/Mirroring.h"
#include "views/theme/Glass.h"
#include "views/theme/SmoothLine.h"

namespace tarnwick {

namespace {

constexpr int kSteps = 1000;
constexpr double kLineWidth = 2;
constexpr double kChartDot = 2.5;
constexpr double kHalo = 4.5;
constexpr double kBarGap = 3;
constexpr double kBarCorner = 2;
constexpr int kEndsHeight = 20;
constexpr double kFillTop = 0.30;
constexpr double kFillFoot = 0.04;
constexpr double kPastBars = 0.45;

}  // namespace

ProgressBar::ProgressBar(const QString& label, QWidget* parent) : QProgressBar(parent), barHeight_(theme::kBarHeight) {
  setAccessibleName(label);
  setRange(0, kSteps);
  setTextVisible(false);
  setFixedHeight(barHeight_);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ProgressBar::setShare(double share) {
  setValue(std::isfinite(share) ? static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * kSteps)) : 0);
}

void ProgressBar::setAccent(const std::optional<Accent>& accent) {
  accent_ = accent;
  update();
}

void ProgressBar::setBarHeight(int height) {
  barHeight_ = height;
  setFixedHeight(height);
}

QSize ProgressBar::sizeHint() const { return {120, barHeight_}; }

void ProgressBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const ControlLook& look = lookOf(*this);
  const QRectF box = rect();
  const double corner = box.height() / 2;
  drawRounded(painter, box, corner, look.palette.track);
  if (value() <= 0) return;
  QRectF part = box;
  part.setWidth(std::max(box.height(), box.width() * value() / kSteps));
  drawRounded(painter, Mirroring(*this)(part), corner, accent_ ? look.palette.accent(*accent_) : look.accentColor());
}

ChartView::ChartView(const QString& label, Kind kind, QWidget* parent) : QWidget(parent), kind_(kind) {
  setAccessibleName(label);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setFixedHeight(sizeHint().height());
}

void ChartView::setSeries(const QList<ChartSeries>& series) {
  if (series == series_) return;
  series_ = series;
  update();
}

void ChartView::setDepth(int depth) {
  depth_ = depth;
  update();
}

void ChartView::setMaximum(const std::optional<double>& maximum) {
  maximum_ = maximum;
  update();
}

void ChartView::setEnds(const QString& begin, const QString& end) {
  begin_ = begin;
  end_ = end;
  setFixedHeight(sizeHint().height());
  update();
}

void ChartView::setChartHeight(int height) {
  chartHeight_ = height;
  setFixedHeight(sizeHint().height());
}

QSize ChartView::sizeHint() const {
  return {200, chartHeight_ + (begin_.isEmpty() && end_.isEmpty() ? 0 : kEndsHeight)};
}

double ChartView::highest() const {
  double highest = maximum_.value_or(0);
  if (!maximum_)
    for (const ChartSeries& series : series_)
      for (const double value : series.values)
        if (std::isfinite(value)) highest = std::max(highest, value);
  return highest > 0 ? highest : 1;
}

QColor ChartView::colorOf(const ChartSeries& series) const {
  const ControlLook& look = lookOf(*this);
  // Without colours the second of two lines is distinguished by its strength.
  if (look.palette.monochrome && &series != &series_.first()) return look.palette.secondary;
  return series.accent ? look.palette.accent(*series.accent) : look.accentColor();
}

void ChartView::paintLine(QPainter& painter, const QRectF& box, const ChartSeries& series) const {
  const QColor color = colorOf(series);
  const qsizetype count = series.values.size();
  const qsizetype slots = std::max<qsizetype>(depth_, count);
  if (count == 0) return;
  const double top = highest();
  const double step = slots > 1 ? box.width() / static_cast<double>(slots - 1) : 0;
  const auto point = [&](qsizetype i) {
    const double value = std::isfinite(series.values[i]) ? std::clamp(series.values[i] / top, 0.0, 1.0) : 0;
    return QPointF(box.right() - step * static_cast<double>(count - 1 - i), box.bottom() - value * box.height());
  };
  QList<QPointF> points;
  for (qsizetype i = 0; i < count; ++i) points << point(i);
  const QPainterPath line = smoothLine(points);
  if (series_.size() == 1 && count > 1) {
    QPainterPath area = line;
    area.lineTo(box.right(), box.bottom());
    area.lineTo(points.first().x(), box.bottom());
    area.closeSubpath();
    QLinearGradient fill(box.topLeft(), box.bottomLeft());
    fill.setColorAt(0, faded(color, kFillTop));
    fill.setColorAt(1, faded(color, kFillFoot));
    painter.fillPath(area, fill);
  }
  painter.strokePath(line, QPen(color, kLineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const QPointF last = points.last();
  painter.setPen(Qt::NoPen);
  painter.setBrush(faded(color, 0.25));
  painter.drawEllipse(last, kHalo, kHalo);
  painter.setBrush(color);
  painter.drawEllipse(last, kChartDot, kChartDot);
}

void ChartView::paintBars(QPainter& painter, const QRectF& box, const ChartSeries& series) const {
  const QColor color = colorOf(series);
  const qsizetype count = series.values.size();
  const auto slots = static_cast<double>(std::max<qsizetype>(depth_, count));
  if (count == 0) return;
  const double top = highest();
  const double width = std::max(1.0, (box.width() - kBarGap * (slots - 1)) / slots);
  painter.setClipRect(box);
  for (qsizetype i = 0; i < count; ++i) {
    const double value = std::isfinite(series.values[i]) ? std::clamp(series.values[i] / top, 0.0, 1.0) : 0;
    const double height = std::max(1.0, value * box.height());
    const double x = box.right() - width - (width + kBarGap) * static_cast<double>(count - 1 - i);
    // The lower corners lie below what is seen.
    drawRounded(painter, QRectF(x, box.bottom() - height, width, height + kBarCorner), kBarCorner,
                i == count - 1 ? color : faded(color, kPastBars));
  }
  painter.setClipping(false);
}

void ChartView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const ControlLook& look = lookOf(*this);
  const QRectF box = QRectF(0, 0, width(), chartHeight_);
  const double line = hairline(painter);
  for (const double share : {0.0, 0.5, 1.0})
    painter.fillRect(QRectF(0, share * (box.height() - line), box.width(), line), look.palette.hairline);
  const QRectF plot = box.adjusted(kHalo, kHalo, -kHalo, 0);
  for (const ChartSeries& series : series_)
    kind_ == Kind::Line ? paintLine(painter, plot.adjusted(-kHalo, 0, 0, 0), series) : paintBars(painter, plot, series);
  const QRectF ends(0, box.height() + 4, width(), kEndsHeight - 4);
  drawTextIn(painter, ends, begin_, TextStyle::Caption, look.palette.secondary);
  drawTextIn(painter, ends, end_, TextStyle::Caption, look.palette.secondary, Qt::AlignRight);
}

}  // namespace tarnwick
