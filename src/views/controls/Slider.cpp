#include "views/controls/Slider.h"

#include <QFocusEvent>
#include <QMouseEvent>
#include <algorithm>
#include <cmath>

#include "base/LocalFigures.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Mirroring.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"

namespace tarnwick {

Slider::Slider(const QString& label, QWidget* parent) : QAbstractSlider(parent), valueWidth_(theme::kSliderValueWidth) {
  setAccessibleName(label);
  setOrientation(Qt::Horizontal);
  setRange(0, 100);
  setPageStep(10);
  setFocusPolicy(Qt::TabFocus);
  setFixedHeight(theme::kControlHeight);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  format_ = [](int value) { return LocalFigures::percent(value); };
}

void Slider::setFormat(std::function<QString(int)> format) {
  format_ = std::move(format);
  update();
}

void Slider::setValueWidth(int width) {
  valueWidth_ = width;
  update();
}

QSize Slider::sizeHint() const { return {160, theme::kControlHeight}; }

double Slider::lineWidth() const {
  const bool written = format_ && !format_(value()).isEmpty();
  return width() - (written ? valueWidth_ : 0);
}

/// `x` is measured from where the line begins.
void Slider::moveTo(double x) {
  const double space = lineWidth() - theme::kSliderKnob;
  if (space <= 0) return;
  const double share = std::clamp((x - theme::kSliderKnob / 2.0) / space, 0.0, 1.0);
  setSliderPosition(minimum() + static_cast<int>(std::lround(share * (maximum() - minimum()))));
}

void Slider::mousePressEvent(QMouseEvent* event) {
  const double x = Mirroring(*this)(event->position().x());
  if (event->button() != Qt::LeftButton || x > lineWidth()) return;
  setSliderDown(true);
  moveTo(x);
}

void Slider::mouseMoveEvent(QMouseEvent* event) {
  if (isSliderDown()) moveTo(Mirroring(*this)(event->position().x()));
}

void Slider::mouseReleaseEvent(QMouseEvent*) { setSliderDown(false); }

void Slider::focusInEvent(QFocusEvent* event) {
  byKeyboard_ = isKeyboardReason(event->reason());
  update();
}

void Slider::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!isEnabled()) painter.setOpacity(disabledOpacity(lookOf(*this)));
  const ControlLook& look = lookOf(*this);
  const double line = lineWidth();
  const double middle = height() / 2.0;
  const int span = std::max(1, maximum() - minimum());
  const double share = static_cast<double>(sliderPosition() - minimum()) / span;
  const Mirroring mirror(*this);
  const double knob = theme::kSliderKnob / 2.0 + share * (line - theme::kSliderKnob);
  const QRectF track(0, middle - theme::kSliderTrack / 2.0, line, theme::kSliderTrack);
  QRectF filled = track;
  filled.setRight(knob);
  drawRounded(painter, mirror(track), theme::kSliderTrack / 2.0, look.palette.track);
  drawRounded(painter, mirror(filled), theme::kSliderTrack / 2.0, look.accentColor());
  const double radius = theme::kSliderKnob / 2.0;
  const QRectF disc = mirror(QRectF(knob - radius, middle - radius, radius * 2, radius * 2));
  drawRounded(painter, disc, radius, look.knob());
  if (look.palette.light) drawInnerLine(painter, disc, radius, 1, look.palette.tertiary);
  if (hasFocus() && byKeyboard_) {
    const double ring = radius + theme::kFocusWidth;
    drawFocusLine(painter,
                  disc.adjusted(-theme::kFocusWidth, -theme::kFocusWidth, theme::kFocusWidth, theme::kFocusWidth), ring,
                  look);
  }
  if (const QString text = format_ ? format_(sliderPosition()) : QString(); !text.isEmpty())
    drawTextIn(painter, mirror(QRectF(line, 0, width() - line, height())), text, TextStyle::ListRow,
               look.palette.primary, mirror.ending());
}

}  // namespace tarnwick
