#include "views/controls/Charts.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "views/controls/ControlAccessible.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Mirroring.h"
#include "views/theme/Glass.h"
#include "views/theme/SmoothLine.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kSteps = 1000;
constexpr double kLineWidth = 2;
constexpr double kChartDot = 2.5;
constexpr double kHalo = 4.5;
constexpr double kBarGap = 3;
constexpr double kDenseGap = 1;  ///< Between so many that they would be thinner than the other.
constexpr double kWordPadding = 3;
constexpr double kWordCorner = 4;
constexpr double kFocusCorner = 4;
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
  installControlAccessibility();
  setAccessibleName(label);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setFixedHeight(sizeHint().height());
}

void ChartView::setSeries(const QList<ChartSeries>& series) {
  if (series == series_) return;
  series_ = series;
  if (pointed_ >= count()) pointed_ = -1;
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

void ChartView::setMinimum(double minimum) {
  if (minimum == minimum_) return;
  minimum_ = minimum;
  update();
}

void ChartView::setWords(std::function<QString(double value)> words) {
  words_ = std::move(words);
  setMouseTracking(words_ != nullptr);
  setFocusPolicy(words_ ? Qt::TabFocus : Qt::NoFocus);
  if (!words_) point(-1);
}

void ChartView::setPlaces(std::function<QString(qsizetype before)> places) {
  places_ = std::move(places);
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

QRectF ChartView::plot() const {
  const QRectF box = QRectF(0, 0, width(), chartHeight_).adjusted(kHalo, kHalo, -kHalo, 0);
  return kind_ == Kind::Line ? box.adjusted(-kHalo, 0, 0, 0) : box;
}

double ChartView::highest() const {
  double highest = maximum_.value_or(minimum_);
  if (!maximum_)
    for (const ChartSeries& series : series_)
      for (const double value : series.values)
        if (std::isfinite(value)) highest = std::max(highest, value);
  return highest > minimum_ ? highest : minimum_ + 1;
}

double ChartView::shareOf(double value) const {
  return std::isfinite(value) ? std::clamp((value - minimum_) / (highest() - minimum_), 0.0, 1.0) : 0;
}

double ChartView::gap() const {
  qsizetype slots = depth_;
  for (const ChartSeries& series : series_) slots = std::max(slots, series.values.size());
  return plot().width() < static_cast<double>(slots) * kBarGap * 2 ? kDenseGap : kBarGap;
}

double ChartView::step(const QRectF& box, qsizetype count) const {
  const auto slots = static_cast<double>(std::max<qsizetype>(depth_, count));
  if (kind_ == Kind::Line) return slots > 1 ? box.width() / (slots - 1) : 0;
  return std::max(1.0, (box.width() - gap() * (slots - 1)) / slots) + gap();
}

double ChartView::middleOf(const QRectF& box, qsizetype before, qsizetype count) const {
  const double between = step(box, count);
  const double half = kind_ == Kind::Line ? 0 : (between - gap()) / 2;
  return box.right() - half - between * static_cast<double>(before);
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
  if (count == 0) return;
  const double between = step(box, count);
  const auto point = [&](qsizetype i) {
    return QPointF(box.right() - between * static_cast<double>(count - 1 - i),
                   box.bottom() - shareOf(series.values[i]) * box.height());
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
  if (count == 0) return;
  const double between = step(box, count);
  const double width = between - gap();
  painter.setClipRect(box);
  for (qsizetype i = 0; i < count; ++i) {
    const double height = std::max(1.0, shareOf(series.values[i]) * box.height());
    const double x = box.right() - width - between * static_cast<double>(count - 1 - i);
    // The lower corners lie below what is seen.
    drawRounded(painter, QRectF(x, box.bottom() - height, width, height + kBarCorner), kBarCorner,
                count - 1 - i == std::max<qsizetype>(0, pointed_) ? color : faded(color, kPastBars));
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
  for (const ChartSeries& series : series_)
    kind_ == Kind::Line ? paintLine(painter, plot(), series) : paintBars(painter, plot(), series);
  if (pointed_ >= 0 && pointed_ < count()) paintPointed(painter, plot());
  if (hasFocus() && byKeyboard_) drawFocusLine(painter, box, kFocusCorner, look);
  const QRectF ends(0, box.height() + 4, width(), kEndsHeight - 4);
  drawTextIn(painter, ends, begin_, TextStyle::Caption, look.palette.secondary);
  drawTextIn(painter, ends, end_, TextStyle::Caption, look.palette.secondary, Qt::AlignRight);
}

void ChartView::mouseMoveEvent(QMouseEvent* event) {
  if (!words_ || count() == 0) return;
  const QRectF box = plot();
  const double between = step(box, count());
  const double back = between > 0 ? (middleOf(box, 0, count()) - event->position().x()) / between : 0;
  point(std::clamp<qsizetype>(static_cast<qsizetype>(std::lround(back)), 0, count() - 1));
}

void ChartView::leaveEvent(QEvent*) {
  if (!byKeyboard_) point(-1);
}

void ChartView::keyPressEvent(QKeyEvent* event) {
  // Time goes from left to right in every language, as the chart is drawn.
  const qsizetype oldest = count() - 1;
  const auto to = [&]() -> std::optional<qsizetype> {
    switch (event->key()) {
      case Qt::Key_Left:
        return pointed_ + 1;
      case Qt::Key_Right:
        return pointed_ - 1;
      case Qt::Key_Home:
        return oldest;
      case Qt::Key_End:
        return 0;
      default:
        return std::nullopt;
    }
  }();
  if (!to || !words_ || oldest < 0) return QWidget::keyPressEvent(event);
  point(std::clamp<qsizetype>(*to, 0, oldest));
}

void ChartView::focusInEvent(QFocusEvent* event) {
  byKeyboard_ = isKeyboardReason(event->reason());
  if (byKeyboard_ && pointed_ < 0 && count() > 0) point(0);
  update();
}

void ChartView::focusOutEvent(QFocusEvent*) {
  byKeyboard_ = false;
  point(-1);
  update();
}

void ChartView::point(qsizetype before) {
  if (before == pointed_) return;
  pointed_ = before;
  update();
  if (!hasFocus() || before < 0) return;
  QAccessibleEvent told(this, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&told);
}

QString ChartView::pointedValues() const {
  QStringList told;
  if (words_ && pointed_ >= 0)
    for (const ChartSeries& series : series_) {
      const qsizetype at = series.values.size() - 1 - pointed_;
      if (at < 0) continue;
      const QString word = words_(series.values[at]);
      told << (series_.size() > 1 && !series.name.isEmpty() ? series.name + u' ' + word : word);
    }
  return told.join(u" · "_s);
}

QString ChartView::pointedPlace() const { return places_ && pointed_ >= 0 ? places_(pointed_) : QString(); }

QString ChartView::pointedWords() const {
  QStringList told{pointedValues(), pointedPlace()};
  told.removeAll(QString());
  return told.join(u" · "_s);
}

/// A word on a ground of its own, `side` of its width beside `place`, within the chart, and what is told quietly behind
/// it. Returns where it is.
QRectF ChartView::paintWord(QPainter& painter, const QString& word, QPointF place, double side,
                            const QString& aside) const {
  const ControlLook& look = lookOf(*this);
  const TextLine line(word, TextStyle::TabLabel);
  const TextLine behind(aside.isEmpty() ? QString() : u" · "_s + aside, TextStyle::TabLabel);
  QRectF box(0, 0, line.width() + behind.width() + kWordPadding * 2, line.ascent() + line.descent() + kWordPadding);
  box.moveTopLeft(place - QPointF(box.width() * side, 0));
  box.moveLeft(std::clamp(box.left(), 0.0, std::max(0.0, width() - box.width())));
  box.moveTop(std::clamp(box.top(), 0.0, std::max(0.0, chartHeight_ - box.height())));
  QColor ground = look.palette.panel.bodyTop;
  ground.setAlpha(255);
  drawRounded(painter, box, kWordCorner, ground);
  const QPointF start(box.left() + kWordPadding, box.top() + kWordPadding / 2 + line.ascent());
  line.draw(painter, start, look.palette.primary);
  if (!aside.isEmpty()) behind.draw(painter, start + QPointF(line.width(), 0), look.palette.secondary);
  return box;
}

/// What is pointed at with its mark, and what the chart's top and foot mean.
void ChartView::paintPointed(QPainter& painter, const QRectF& box) const {
  const ControlLook& look = lookOf(*this);
  const double x = middleOf(box, pointed_, count());
  double y = box.bottom();
  if (kind_ == Kind::Line)
    painter.fillRect(QRectF(x - hairline(painter) / 2, 0, hairline(painter), box.bottom()), look.palette.secondary);
  for (const ChartSeries& series : series_) {
    const qsizetype at = series.values.size() - 1 - pointed_;
    if (at < 0) continue;
    const double height = box.bottom() - shareOf(series.values[at]) * box.height();
    y = std::min(y, height);
    if (kind_ != Kind::Line) continue;
    painter.setPen(Qt::NoPen);
    painter.setBrush(colorOf(series));
    painter.drawEllipse(QPointF(x, height), kChartDot + 1, kChartDot + 1);
  }
  // Away from the line: above it where there is space.
  const double lineHeight = TextLine(u"0"_s, TextStyle::TabLabel).ascent() + kWordPadding * 3;
  const QRectF pointed = paintWord(painter, pointedValues(), {x, y - lineHeight - kHalo}, 0.5, pointedPlace());
  const bool isLeft = x < box.center().x();
  const double edge = isLeft ? box.right() : box.left();
  for (const auto& [value, top] : {std::pair{highest(), 0.0}, std::pair{minimum_, box.bottom()}}) {
    const QString word = words_(value);
    const double width = TextLine(word, TextStyle::TabLabel).width() + kWordPadding * 2;
    const double height = lineHeight - kWordPadding;
    const QRectF at(edge - (isLeft ? width : 0), std::min(top, chartHeight_ - height), width, height);
    if (!at.intersects(pointed)) paintWord(painter, word, {edge, top}, isLeft ? 1 : 0);
  }
}

}  // namespace tarnwick
