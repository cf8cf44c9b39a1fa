#include "views/controls/Switch.h"

#include <QFocusEvent>
#include <QKeyEvent>

#include "views/controls/ControlAccessible.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Mirroring.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"

namespace tarnwick {

Switch::Switch(const QString& label, QWidget* parent)
    : QCheckBox(parent), knob_(animator_, theme::kFadeSeconds, [this] { update(); }) {
  installControlAccessibility();
  setAccessibleName(label);
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  setFixedSize(theme::kSwitchWidth, theme::kSwitchHeight);
}

QSize Switch::sizeHint() const { return {theme::kSwitchWidth, theme::kSwitchHeight}; }

void Switch::checkStateSet() {
  QCheckBox::checkStateSet();
  travel();
}

void Switch::nextCheckState() {
  QCheckBox::nextCheckState();
  travel();
}

void Switch::travel() {
  const double to = isChecked() ? 1 : 0;
  if (isVisible() && !animator_.hasClock()) animator_.setClock(makeClockFor(*this));
  isVisible() ? knob_.fadeTo(to) : knob_.jump(to);
  update();
}

void Switch::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    click();
  else
    QCheckBox::keyPressEvent(event);
}

void Switch::focusInEvent(QFocusEvent* event) {
  byKeyboard_ = isKeyboardReason(event->reason());
  QCheckBox::focusInEvent(event);
}

void Switch::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!isEnabled()) painter.setOpacity(disabledOpacity(lookOf(*this)));
  const ControlLook& look = lookOf(*this);
  const double at = knob_.value();
  const QRectF box(0, 0, theme::kSwitchWidth, theme::kSwitchHeight);
  const double corner = box.height() / 2;
  drawRounded(painter, box, corner, look.palette.tab);
  if (at > 0) drawRounded(painter, box, corner, faded(look.palette.accent(Accent::Blue), at));
  if (hasFocus() && byKeyboard_) {
    drawFocusLine(painter, box, corner, look);
    // On the accent's own colour that line is not seen.
    const double within = theme::kFieldFocus;
    if (isChecked())
      drawInnerLine(painter, box.adjusted(within, within, -within, -within), corner - within, theme::kFieldFocus,
                    look.palette.inkOnAccent);
  }
  const double inset = (theme::kSwitchHeight - theme::kSwitchKnob) / 2.0;
  const double x = inset + at * (theme::kSwitchWidth - theme::kSwitchKnob - inset * 2);
  const QRectF disc = Mirroring(*this)(QRectF(x, inset, theme::kSwitchKnob, theme::kSwitchKnob));
  drawRounded(painter, disc, theme::kSwitchKnob / 2.0, look.knob());
  // Without colours the track of a switch that is on is as white as the knob.
  if (look.palette.monochrome && at > 0)
    drawRounded(painter, disc, theme::kSwitchKnob / 2.0, faded(look.palette.inkOnAccent, at));
  if (look.palette.light) drawInnerLine(painter, disc, theme::kSwitchKnob / 2.0, 1, look.palette.tileEdge);
}

}  // namespace tarnwick
