#include "views/dock/MessageBubble.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

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
constexpr double kCrossSize = 12;

/// The message in lines; a word that is wider than the bubble is broken.
struct WrappedText {
  QTextLayout layout;
  QSizeF size;

  explicit WrappedText(const QString& text) : layout(text, Typography::widgetFont(TextStyle::Body)) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
      line.setLineWidth(theme::kBubbleTextWidth);
      line.setPosition(QPointF(0, size.height()));
      size = QSizeF(std::max(size.width(), line.naturalTextWidth()), size.height() + line.height());
    }
    layout.endLayout();
  }
};

}  // namespace

MessageBubble::MessageBubble(QWidget* parent)
    : QWidget(parent), palette_(Palette::make(DockStyle::DarkGlass, Backdrop::Plain, false)) {
  setAttribute(Qt::WA_TranslucentBackground);
  setMouseTracking(true);
  setFocusPolicy(Qt::TabFocus);
  setAccessibleName(QCoreApplication::translate("Dock", "Message"));
}

void MessageBubble::setMessage(const QString& message) {
  message_ = message;
  setAccessibleDescription(message);
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

QSize MessageBubble::bubbleSize() const {
  const QSizeF text = WrappedText(message_).size;
  const int textWidth = static_cast<int>(std::ceil(text.width()));
  const int width = kPadding + kSymbol + kSymbolGap + textWidth + kButtonGap + kButton + kButtonInset;
  return {width, std::max(static_cast<int>(std::ceil(text.height())) + kPadding * 2, kButton + kButtonInset * 2)};
}

QMargins MessageBubble::margins() const { return Glass::margins(palette_.panel, 1); }

QRect MessageBubble::bubbleRect() const { return rect().marginsRemoved(margins()); }

QRectF MessageBubble::buttonRect() const {
  const QRect bubble = bubbleRect();
  return QRectF(bubble.right() + 1 - kButtonInset - kButton, bubble.top() + kButtonInset, kButton, kButton);
}

QRegion MessageBubble::outlineRegion() const { return Glass::outline(bubbleRect(), theme::kBubbleCorner); }

void MessageBubble::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRect bubble = bubbleRect();
  glass_.paint(painter, bubble, palette_.panel, theme::kBubbleCorner, 1);
  const QRectF button = buttonRect();
  const QRectF symbol(bubble.left() + kPadding, button.center().y() - kSymbol / 2.0, kSymbol, kSymbol);
  Symbols::draw(painter, u"exclamationmark.circle"_s, symbol, palette_.accent(Accent::Orange));

  const WrappedText text(message_);
  const double textTop = std::round(bubble.top() + (bubble.height() - text.size.height()) / 2);
  painter.setPen(palette_.primary);
  text.layout.draw(&painter, QPointF(bubble.left() + kPadding + kSymbol + kSymbolGap, textTop));

  if (pressed_ || hovered_)
    drawRounded(painter, button, theme::kButtonCorner, pressed_ ? palette_.buttonPressed : palette_.buttonHover);
  if (hasFocus())
    drawInnerLine(painter, button, theme::kButtonCorner, theme::kFocusWidth, palette_.accent(Accent::Blue));
  const QPointF middle = button.center();
  Symbols::draw(painter, u"xmark"_s,
                QRectF(middle.x() - kCrossSize / 2, middle.y() - kCrossSize / 2, kCrossSize, kCrossSize),
                palette_.secondary);
}

void MessageBubble::setButton(bool hovered, bool pressed) {
  if (hovered == hovered_ && pressed == pressed_) return;
  hovered_ = hovered;
  pressed_ = pressed;
  update(buttonRect().toAlignedRect());
}

void MessageBubble::mouseMoveEvent(QMouseEvent* event) {
  setButton(buttonRect().contains(event->position()), pressed_);
}

void MessageBubble::mousePressEvent(QMouseEvent* event) {
  setButton(hovered_, event->button() == Qt::LeftButton && buttonRect().contains(event->position()));
}

void MessageBubble::mouseReleaseEvent(QMouseEvent* event) {
  const bool meant = pressed_ && buttonRect().contains(event->position());
  setButton(hovered_, false);
  if (meant) Q_EMIT dismissed();
}

void MessageBubble::leaveEvent(QEvent*) { setButton(false, false); }

void MessageBubble::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
    case Qt::Key_Escape:
      Q_EMIT dismissed();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace tarnwick
