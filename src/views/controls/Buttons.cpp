#include "views/controls/Buttons.h"

#include <QFocusEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <algorithm>

#include "views/controls/ControlAccessible.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Mirroring.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr double kFocusInset = 3;  // Of the second line on a button of the accent's colour.

QColor lightened(const QColor& color, double share) {
  const auto blend = [share](float part) { return static_cast<float>(part + (1 - part) * share); };
  return QColor::fromRgbF(blend(color.redF()), blend(color.greenF()), blend(color.blueF()), color.alphaF());
}

/// Back and on point the other way for people who read from the right.
QString theOtherWay(const QString& symbol) {
  if (symbol == "chevron.left"_L1) return u"chevron.right"_s;
  return symbol == "chevron.right"_L1 ? u"chevron.left"_s : symbol;
}

}  // namespace

PaintedButton::PaintedButton(const QString& label, QWidget* parent) : QPushButton(parent) {
  installControlAccessibility();
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  setLabel(label);
}

void PaintedButton::setLabel(const QString& label) {
  label_ = label;
  setText(QString(label).replace(u"&"_s, u"&&"_s));  // A single one would be taken for a mnemonic.
  updateGeometry();
  update();
}

QColor PaintedButton::ground() const {
  const Palette& palette = look().palette;
  if (isDown()) return palette.buttonPressed;
  return underMouse() && isEnabled() ? palette.buttonHover : palette.button;
}

void PaintedButton::prepare(QPainter& painter) const {
  painter.setRenderHint(QPainter::Antialiasing);
  if (!isEnabled()) painter.setOpacity(disabledOpacity(look()));
}

void PaintedButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    click();
  else
    QPushButton::keyPressEvent(event);
}

void PaintedButton::focusInEvent(QFocusEvent* event) {
  byKeyboard_ = isKeyboardReason(event->reason());
  QPushButton::focusInEvent(event);
}

Button::Button(const QString& label, Role role, QWidget* parent) : PaintedButton(label, parent), role_(role) {
  setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

void Button::setRole(Role role) {
  role_ = role;
  update();
}

void Button::setSymbol(const QString& symbol) {
  symbol_ = symbol;
  updateGeometry();
  update();
}

int Button::wordWidth() const { return QFontMetrics(buttonFont()).horizontalAdvance(label()); }

QSize Button::sizeHint() const {
  const int symbol = symbol_.isEmpty() ? 0 : theme::kButtonSymbol + theme::kButtonSymbolGap;
  const int padding = role_ == Role::Quiet ? theme::kRowOverhang : theme::kButtonPadding;
  return {wordWidth() + symbol + padding * 2, theme::kControlHeight};
}

QSize Button::minimumSizeHint() const { return {std::min(sizeHint().width(), 64), theme::kControlHeight}; }

void Button::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  prepare(painter);
  const ControlLook& look = this->look();
  const QRectF box = rect();
  QColor ink = role_ == Role::Quiet ? look.palette.secondary : look.palette.primary;
  const bool isFilled = role_ == Role::Primary || role_ == Role::Danger;
  if (isFilled && !isEnabled()) {
    // A pale accent would swallow the word on it.
    painter.setOpacity(1);
    drawRounded(painter, box, theme::kButtonCorner, look.palette.button);
    ink = look.palette.tertiary;
  } else if (isFilled) {
    // Without colours the accents that are fainter than others would look disabled.
    QColor fill =
        role_ == Role::Danger || look.palette.monochrome ? look.palette.accent(Accent::Red) : look.accentColor();
    if (isEnabled() && underMouse() && !isDown()) fill = lightened(fill, theme::kPrimaryHover);
    drawRounded(painter, box, theme::kButtonCorner, isDown() ? faded(fill, 0.85) : fill);
    ink = look.palette.inkOnAccent;
  } else if (isChecked()) {
    drawRounded(painter, box, theme::kButtonCorner, faded(look.accentColor(), theme::kChosenShare));
    ink = look.palette.accentWord(look.accent);
  } else if (role_ == Role::Plain || isDown() || (underMouse() && isEnabled())) {
    drawRounded(painter, box, theme::kButtonCorner, ground());
  }
  if (showsFocus()) {
    drawFocusLine(painter, box, theme::kButtonCorner, look);
    // The line would drown in a ground of its own colour.
    if (isFilled && isEnabled())
      drawInnerLine(painter, box.adjusted(kFocusInset, kFocusInset, -kFocusInset, -kFocusInset),
                    theme::kButtonCorner - kFocusInset, theme::kFieldFocus, look.palette.inkOnAccent);
  }

  const int symbol = symbol_.isEmpty() ? 0 : theme::kButtonSymbol + theme::kButtonSymbolGap;
  const int space = width() - theme::kRowOverhang * 2 - symbol;
  painter.setFont(buttonFont());
  // On another device the same word may be a pixel wider than the one that the size was made for.
  const QString word = painter.fontMetrics().elidedText(label(), Qt::ElideRight, space + 1);
  const int wordSpace = painter.fontMetrics().horizontalAdvance(word);
  const Mirroring mirror(*this);
  double x = (width() - symbol - wordSpace) / 2.0;
  if (symbol > 0) {
    const QRectF place(x, (height() - theme::kButtonSymbol) / 2.0, theme::kButtonSymbol, theme::kButtonSymbol);
    drawControlSymbol(painter, symbol_, mirror(place), ink);
    x += symbol;
  }
  painter.setPen(ink);
  runAsWritten(painter, word);
  painter.drawText(mirror(QRectF(x, 0, wordSpace + 1, height())),
                   static_cast<int>(Qt::AlignVCenter | mirror.reading() | Qt::AlignAbsolute | Qt::TextSingleLine),
                   word);
}

IconButton::IconButton(const QString& symbol, const QString& label, QWidget* parent)
    : PaintedButton(label, parent), symbol_(symbol) {
  setToolTip(label);
  setFixedSize(theme::kControlHeight, theme::kControlHeight);
}

void IconButton::setSymbol(const QString& symbol) {
  symbol_ = symbol;
  update();
}

void IconButton::setGround(bool ground) {
  hasGround_ = ground;
  update();
}

void IconButton::setTone(Tone tone) {
  tone_ = tone;
  update();
}

QSize IconButton::sizeHint() const { return {theme::kControlHeight, theme::kControlHeight}; }

void IconButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  prepare(painter);
  const ControlLook& look = this->look();
  const QRectF box = rect();
  if (isChecked())
    drawRounded(painter, box, theme::kButtonCorner, faded(look.accentColor(), theme::kChosenShare));
  else if (hasGround_ || isDown() || (underMouse() && isEnabled()))
    drawRounded(painter, box, theme::kButtonCorner, ground());
  if (showsFocus()) drawFocusLine(painter, box, theme::kButtonCorner, look);
  const double half = theme::kIconButtonSymbol / 2.0;
  const QColor ink = isChecked() ? look.palette.accentWord(look.accent) : toneColor(look, tone_);
  drawControlSymbol(painter, isRightToLeft() ? theOtherWay(symbol_) : symbol_,
                    QRectF(box.center() - QPointF(half, half), QSizeF(half * 2, half * 2)), ink);
}

}  // namespace tarnwick
