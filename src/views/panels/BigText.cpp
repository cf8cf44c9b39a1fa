#include "views/panels/BigText.h"

#include <algorithm>

#include "views/controls/ControlTheme.h"
#include "views/controls/Mirroring.h"
#include "views/controls/PlainTip.h"
#include "views/theme/Typography.h"

namespace tarnwick {

namespace {
constexpr double kLargest = 32;
constexpr double kUnitShare = 0.55;  // Of the figure, as of a panel's figure and its unit.
constexpr double kUnitGap = 4;
}  // namespace

double bigTextWidth(const QString& text, double size) {
  const TextLine line(text, TextStyle::Display);
  return line.width() * size / line.pixelSize();
}

double drawBigText(QPainter& painter, const QString& text, QPointF baseline, double size, const QColor& color,
                   Qt::Alignment alignment) {
  const TextLine line(text, TextStyle::Display);
  const double factor = size / line.pixelSize();
  const double width = line.width() * factor;
  double x = baseline.x();
  if (alignment & Qt::AlignHCenter)
    x -= width / 2;
  else if (alignment & Qt::AlignRight)
    x -= width;
  else
    x -= line.leftBearing() * factor;
  painter.save();
  painter.translate(x, snappedY(painter, baseline));
  painter.scale(factor, factor);
  line.draw(painter, {}, color);
  painter.restore();
  return width;
}

ResultView::ResultView(QWidget* parent) : QWidget(parent) {
  setFixedHeight(theme::kPanelFigureHeight);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize ResultView::sizeHint() const { return {200, theme::kPanelFigureHeight}; }

void ResultView::setResult(const QStringList& forms, const QString& unit) {
  forms_ = forms;
  unit_ = unit;
  sentence_.clear();
  const QString whole = forms.value(0) + (unit.isEmpty() ? QString() : u' ' + unit);
  setAccessibleName(whole);
  setPlainTip(*this, whole);
  update();
}

void ResultView::setSentence(const QString& sentence) {
  forms_.clear();
  sentence_ = sentence;
  setAccessibleName(sentence);
  setToolTip({});
  update();
}

void ResultView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Palette& palette = lookOf(*this).palette;
  if (forms_.isEmpty()) {
    drawTextIn(painter, rect(), sentence_, TextStyle::Body, palette.secondary, Mirroring(*this).reading());
    return;
  }
  const auto widthAt = [this](const QString& form, double size) {
    return bigTextWidth(form, size) + (unit_.isEmpty() ? 0 : kUnitGap + bigTextWidth(unit_, size * kUnitShare));
  };
  QString form = forms_.last();
  double size = 13;
  for (const double each : {kLargest, 26.0, 22.0, 18.0, 15.0}) {
    // Here every digit is worth a smaller figure, as long as that can be read with ease.
    if (widthAt(forms_.first(), each) > width()) continue;
    form = forms_.first();
    size = each;
    break;
  }
  if (form != forms_.first()) {
    const auto fits = std::ranges::find_if(forms_, [&](const QString& each) { return widthAt(each, 18) <= width(); });
    if (fits != forms_.end()) form = *fits;
    size = 18;
  }
  const double baseline = height() / 2.0 + size * 0.36;
  const double start = isRightToLeft() ? width() - widthAt(form, size) : 0;
  const double end = start + drawBigText(painter, form, {start, baseline}, size, palette.primary);
  if (!unit_.isEmpty()) drawBigText(painter, unit_, {end + kUnitGap, baseline}, size * kUnitShare, palette.secondary);
}

}  // namespace tarnwick
