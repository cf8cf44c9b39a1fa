#include "views/controls/Stepper.h"

#include <QAccessible>
#include <QKeyEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "base/LocalFigures.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlAccessible.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/ControlWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

Stepper::Stepper(const QString& label, QWidget* parent)
    : QWidget(parent),
      less_(new IconButton(u"minus"_s, ControlWords::tr("Decrease %1").arg(label), this)),
      more_(new IconButton(u"plus"_s, ControlWords::tr("Increase %1").arg(label), this)) {
  installControlAccessibility();
  setAccessibleName(label);
  for (IconButton* button : {less_, more_}) button->setAutoRepeat(true);
  connect(less_, &QPushButton::clicked, this, [this] { stepBy(-1); });
  connect(more_, &QPushButton::clicked, this, [this] { stepBy(1); });
  setFixedSize(sizeHint());
  showValue();
}

void Stepper::setValue(int value) {
  const int before = std::exchange(value_, std::clamp(value, least_, most_));
  showValue();
  if (value_ == before) return;
  QAccessibleValueChangeEvent valueEvent(this, value_);
  QAccessible::updateAccessibility(&valueEvent);
}

void Stepper::setRange(int least, int most) {
  least_ = least;
  most_ = std::max(least, most);
  setValue(value_);
}

void Stepper::setFormat(std::function<QString(int)> format) {
  format_ = std::move(format);
  showValue();
}

QSize Stepper::sizeHint() const {
  return {theme::kControlHeight * 2 + theme::kStepperValueWidth, theme::kControlHeight};
}

QString Stepper::text() const { return format_ ? format_(value_) : LocalFigures::number(value_); }

void Stepper::stepBy(int steps) { change(value_ + steps * step_); }

void Stepper::stepTo(int wanted) {
  // The last step to an end may be a shorter one.
  const bool isEnd = wanted <= least_ || wanted >= most_;
  isEnd ? change(wanted) : stepBy(static_cast<int>(std::lround((static_cast<double>(wanted) - value_) / step_)));
}

void Stepper::change(int value) {
  const int before = value_;
  setValue(value);
  if (value_ != before) Q_EMIT valueChanged(value_);
}

void Stepper::showValue() {
  less_->setEnabled(value_ > least_);
  more_->setEnabled(value_ < most_);
  update();
}

void Stepper::resizeEvent(QResizeEvent*) {
  const int end = width() - theme::kControlHeight;
  less_->move(isRightToLeft() ? end : 0, 0);
  more_->move(isRightToLeft() ? 0 : end, 0);
}

void Stepper::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)
    stepBy(event->key() == Qt::Key_Up ? 1 : -1);
  else
    QWidget::keyPressEvent(event);
}

void Stepper::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRectF box = QRectF(rect()).adjusted(theme::kControlHeight, 0, -theme::kControlHeight, 0);
  drawTextIn(painter, box, text(), TextStyle::Body, lookOf(*this).palette.primary, Qt::AlignHCenter);
}

}  // namespace tarnwick
