#include "views/dock/MessageBubble.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "views/controls/Mirroring.h"
#include "views/controls/WrappedText.h"
#include "views/theme/Symbols.h"
#include "views/theme/Theme.h"
#include "views/theme/Typography.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPadding = static_cast<int>(theme::kBubblePadding);
constexpr int kButton = static_cast<int>(theme::kButtonSize);
constexpr int kSymbol = static_cast<int>(theme::kSymbolSize);
constexpr int kSymbolGap = 10;
constexpr int kButtonGap = 8;
constexpr int kButtonInset = 8;
constexpr double kActionPadding = 12;
constexpr double kCrossSize = 12;

WrappedText wrapped(const QString& message) { return {message, TextStyle::Body, theme::kBubbleTextWidth}; }

}  // namespace

MessageBubble::MessageBubble(QWidget* parent)
    : QWidget(parent),
      symbol_(u"exclamationmark.circle"_s),
      palette_(Palette::make(DockStyle::DarkGlass, Backdrop::Plain, false)) {
  setAttribute(Qt::WA_TranslucentBackground);
  setMouseTracking(true);
  setFocusPolicy(Qt::TabFocus);
}

void MessageBubble::setMessage(const QString& message) {
  message_ = message;
  setAccessibleName(message);
  updateGeometry();
  update();
}

void MessageBubble::setSign(const QString& symbol, Accent accent) {
  symbol_ = symbol;
  accent_ = accent;
  update();
}

void MessageBubble::setAction(const QString& word) {
  action_ = word;
  updateGeometry();
  update();
}

void MessageBubble::setLook(DockStyle style, Backdrop backdrop) {
  palette_ = Palette::make(style, backdrop, false);
  // The bubble is a panel, and panels have grounds of their own that the scheme's text is meant for.
  const Palette scheme = Palette::make(palette_.light ? DockStyle::LightGlass : DockStyle::DarkGlass, backdrop, false);
  palette_ = scheme;
  updateGeometry();
  update();
}

double MessageBubble::actionWidth() const {
  return action_.isEmpty() ? 0 : std::ceil(TextLine(action_, TextStyle::Body).width() + kActionPadding * 2);
}

QSize MessageBubble::bubbleSize() const {
  const QSizeF text = wrapped(message_).size;
  const int textWidth = static_cast<int>(std::ceil(text.width()));
  const int action = action_.isEmpty() ? 0 : static_cast<int>(actionWidth()) + kButtonGap;
  const int width = kPadding + kSymbol + kSymbolGap + textWidth + kButtonGap + action + kButton + kButtonInset;
  return {width, std::max(static_cast<int>(std::ceil(text.height())) + kPadding * 2, kButton + kButtonInset * 2)};
}

QMargins MessageBubble::margins() const { return Glass::margins(palette_.panel, 1); }

QRect MessageBubble::bubbleRect() const { return rect().marginsRemoved(margins()); }

QRectF MessageBubble::rectOf(Button button) const {
  const QRect bubble = bubbleRect();
  const QRectF cross(bubble.right() + 1 - kButtonInset - kButton, bubble.top() + kButtonInset, kButton, kButton);
  const Mirroring mirror(*this);
  if (button == Button::Cross) return mirror(cross);
  if (button == Button::None || action_.isEmpty()) return {};
  return mirror(QRectF(cross.left() - kButtonGap - actionWidth(), cross.top(), actionWidth(), kButton));
}

MessageBubble::Button MessageBubble::buttonAt(QPointF point) const {
  for (const Button button : {Button::Action, Button::Cross})
    if (rectOf(button).contains(point)) return button;
  return Button::None;
}

QRegion MessageBubble::outlineRegion() const { return Glass::outline(bubbleRect(), theme::kBubbleCorner); }

void MessageBubble::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void MessageBubble::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRect bubble = bubbleRect();
  glass_.paint(painter, bubble, palette_.panel, theme::kBubbleCorner, 1);
  const double middle = rectOf(Button::Cross).center().y();
  const QRectF symbol(bubble.left() + kPadding, middle - kSymbol / 2.0, kSymbol, kSymbol);
  const Mirroring mirror(*this);
  Symbols::draw(painter, symbol_, mirror(symbol), palette_.accent(accent_));

  WrappedText text = wrapped(message_);
  const double textTop = std::round(bubble.top() + (bubble.height() - text.size.height()) / 2);
  painter.setPen(palette_.primary);
  const QRectF place(QPointF(bubble.left() + kPadding + kSymbol + kSymbolGap, textTop), text.size);
  text.draw(painter, mirror(place).topLeft(), mirror.isMirrored());
  if (!action_.isEmpty()) paintButton(painter, Button::Action);
  paintButton(painter, Button::Cross);
}

void MessageBubble::paintButton(QPainter& painter, Button button) const {
  const QRectF place = rectOf(button);
  QColor ground = button == Button::Action ? palette_.button : QColor();
  if (hovered_ == button) ground = palette_.buttonHover;
  if (pressed_ == button) ground = palette_.buttonPressed;
  if (ground.isValid()) drawRounded(painter, place, theme::kButtonCorner, ground);
  if (hasFocus() && button == first())
    drawInnerLine(painter, place, theme::kButtonCorner, theme::kFocusWidth, palette_.accent(Accent::Blue));
  if (button == Button::Action) {
    const TextLine word(action_, TextStyle::Body);
    word.drawCentred(painter, {place.center().x(), place.center().y() + word.capHeight() / 2}, palette_.primary);
    return;
  }
  const QPointF corner = place.center() - QPointF(kCrossSize, kCrossSize) / 2;
  Symbols::draw(painter, u"xmark"_s, QRectF(corner, QSizeF(kCrossSize, kCrossSize)), palette_.secondary);
}

void MessageBubble::setButtons(Button hovered, Button pressed) {
  if (hovered == hovered_ && pressed == pressed_) return;
  hovered_ = hovered;
  pressed_ = pressed;
  for (const Button button : {Button::Action, Button::Cross}) update(rectOf(button).toAlignedRect());
}

void MessageBubble::mouseMoveEvent(QMouseEvent* event) { setButtons(buttonAt(event->position()), pressed_); }

void MessageBubble::mousePressEvent(QMouseEvent* event) {
  setButtons(hovered_, event->button() == Qt::LeftButton ? buttonAt(event->position()) : Button::None);
}

void MessageBubble::mouseReleaseEvent(QMouseEvent* event) {
  const Button meant = pressed_ == buttonAt(event->position()) ? pressed_ : Button::None;
  setButtons(hovered_, Button::None);
  if (meant == Button::Action) Q_EMIT actionRequested();
  if (meant == Button::Cross) Q_EMIT dismissed();
}

void MessageBubble::enterEvent(QEnterEvent*) { Q_EMIT pointed(true); }

void MessageBubble::leaveEvent(QEvent*) {
  setButtons(Button::None, Button::None);
  Q_EMIT pointed(false);
}

void MessageBubble::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      if (first() == Button::Action) {
        Q_EMIT actionRequested();
        return;
      }
      Q_EMIT dismissed();
      return;
    case Qt::Key_Escape:
      Q_EMIT dismissed();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace tarnwick
