#include "views/window/LayoutCard.h"

#include <QKeyEvent>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "views/controls/ChoiceGroup.h"
#include "views/controls/ControlAccessible.h"
#include "views/controls/Mirroring.h"
#include "views/theme/Glass.h"
#include "views/theme/Theme.h"
#include "views/window/LayoutPicture.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kTinyPadding = 5;
constexpr int kSmallPadding = 7;
constexpr int kMostSmallWidth = 180;
constexpr int kSmallName = 26;
constexpr double kSmallCorner = 10;
constexpr double kSmallLine = 1.5;

constexpr int kBadgeSpace = 6;  // Around a large card, where the mark of the chosen one reaches over its edge.
constexpr int kPadding = 12;
constexpr int kNameBelow = 19;  // From the picture to the middle of the name.
constexpr int kTextBelow = 30;
constexpr int kDescriptionLines = 3;
constexpr double kCardCorner = 14;
constexpr double kLine = 2;
constexpr double kBadgeRadius = 11;

QSize pictureSize(LayoutCard::Size size) {
  switch (size) {
    case LayoutCard::Size::Tiny:
      return LayoutPicture::kTiny;
    case LayoutCard::Size::Small:
      return LayoutPicture::kSmall;
    case LayoutCard::Size::Large:
      return LayoutPicture::kLarge;
  }
  return {};
}

QFont descriptionFont() { return Typography::widgetFont(TextStyle::Caption); }

double lineHeight() { return QFontMetricsF(descriptionFont()).height() + 1; }

/// A sentence in a few lines, the last of which is elided if there would be more.
void drawSentence(QPainter& painter, const QRectF& box, const QString& text, Qt::LayoutDirection direction) {
  QTextLayout layout(text, painter.font());
  QTextOption option(direction == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft);
  option.setTextDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  layout.setTextOption(option);
  layout.beginLayout();
  double y = 0;
  for (int i = 0; i < kDescriptionLines; ++i) {
    QTextLine line = layout.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(box.width());
    const bool isLast = i + 1 == kDescriptionLines;
    if (isLast && line.textStart() + line.textLength() < text.size()) {
      const QString rest =
          painter.fontMetrics().elidedText(text.mid(line.textStart()), Qt::ElideRight, static_cast<int>(box.width()));
      runAsWritten(painter, text);
      painter.drawText(QRectF(box.left(), box.top() + y, box.width(), lineHeight()),
                       static_cast<int>(option.alignment() | Qt::AlignAbsolute), rest);
      break;
    }
    line.draw(&painter, box.topLeft() + QPointF(0, y));
    y += lineHeight();
  }
  layout.endLayout();
}

}  // namespace

LayoutCard::LayoutCard(DockLayout layout, Size size, QWidget* parent)
    : QRadioButton(parent), layout_(layout), size_(size), picture_(new LayoutPicture(layout, pictureSize(size), this)) {
  installControlAccessibility();
  setText(label(layout).replace(u"&"_s, u"&&"_s));  // A single one would be taken for a mnemonic.
  setAccessibleDescription(description(layout));
  if (size == Size::Small) setToolTip(description(layout));
  if (size == Size::Tiny) setToolTip(label(layout));
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  connect(this, &QAbstractButton::toggled, this, &LayoutCard::move);
  connect(this, &QAbstractButton::clicked, this, [this] { Q_EMIT chosen(layout_); });
}

void LayoutCard::follow(const DockConfiguration& config) {
  picture_->setAtTop(config.position == "top"_L1);
  setChosen(config.layout == layout_);
}

void LayoutCard::setChosen(bool chosen) {
  // One of a group cannot be taken back while the group is exclusive.
  setAutoExclusive(chosen);
  setChecked(chosen);
  setAutoExclusive(true);
  if (parentWidget()) enterAtChosen(parentWidget()->findChildren<LayoutCard*>(Qt::FindDirectChildrenOnly));
}

void LayoutCard::setReduceMotion(bool reduce) { picture_->setReduceMotion(reduce); }

int LayoutCard::smallWidth() {
  double widest = 0;
  for (const DockLayout layout : kDockLayouts)
    widest = std::max(widest, TextLine(tarnwick::label(layout), TextStyle::ListRowStrong).width());
  return std::clamp(static_cast<int>(std::ceil(widest)) + kSmallPadding, kSmallWidth, kMostSmallWidth);
}

QSize LayoutCard::sizeHint() const {
  if (size_ == Size::Tiny)
    return LayoutPicture::kTiny.grownBy({kTinyPadding, kTinyPadding, kTinyPadding, kTinyPadding});
  if (size_ == Size::Small) return {smallWidth(), LayoutPicture::kSmall.height() + kSmallPadding + kSmallName};
  const int text = kTextBelow + static_cast<int>(lineHeight() * kDescriptionLines + 1);
  return {LayoutPicture::kLarge.width() + kPadding * 2 + kBadgeSpace * 2,
          LayoutPicture::kLarge.height() + kPadding * 2 + text + kBadgeSpace * 2};
}

QRectF LayoutCard::ground() const {
  if (size_ != Size::Large) return rect();
  return QRectF(rect()).adjusted(kBadgeSpace, kBadgeSpace, -kBadgeSpace, -kBadgeSpace);
}

void LayoutCard::resizeEvent(QResizeEvent* event) {
  QRadioButton::resizeEvent(event);
  const int top = size_ == Size::Large ? kBadgeSpace + kPadding : size_ == Size::Small ? kSmallPadding : kTinyPadding;
  picture_->move((width() - picture_->width()) / 2, top);
}

void LayoutCard::move() { picture_->setMoving(underMouse() || isChecked()); }

void LayoutCard::enterEvent(QEnterEvent* event) {
  QRadioButton::enterEvent(event);
  // One that is chosen played when it was; the pointer asks for it again.
  picture_->setMoving(false);
  picture_->setMoving(true);
}

void LayoutCard::leaveEvent(QEvent* event) {
  QRadioButton::leaveEvent(event);
  picture_->setMoving(false);
}

void LayoutCard::focusInEvent(QFocusEvent* event) {
  byKeyboard_ = isKeyboardReason(event->reason());
  QRadioButton::focusInEvent(event);
}

void LayoutCard::keyPressEvent(QKeyEvent* event) {
  byKeyboard_ = true;
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  // On the card that is chosen already the key means the window's own button.
  if (isReturn && !isChecked())
    click();
  else if (isReturn)
    event->ignore();
  else
    QRadioButton::keyPressEvent(event);
  update();
}

void LayoutCard::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (!isEnabled()) painter.setOpacity(disabledOpacity(lookOf(*this)));
  const ControlLook& look = lookOf(*this);
  if (size_ != Size::Large)
    paintSmall(painter, look);
  else
    paintLarge(painter, look);
}

void LayoutCard::paintSmall(QPainter& painter, const ControlLook& look) const {
  const QRectF box = ground();
  if (isChecked()) {
    drawRounded(painter, box, kSmallCorner, look.palette.selection);
    drawInnerLine(painter, box, kSmallCorner, kSmallLine, look.accentColor());
  } else if (underMouse()) {
    drawRounded(painter, box, kSmallCorner, look.palette.tile);
  }
  // Within the line of the chosen one, so that both are seen.
  const double inset = isChecked() ? kSmallLine + 1 : 0;
  if (hasFocus() && byKeyboard_)
    drawFocusLine(painter, box.adjusted(inset, inset, -inset, -inset), kSmallCorner - inset, look);
  if (size_ == Size::Tiny) return;
  const double top = kSmallPadding + LayoutPicture::kSmall.height();
  drawTextIn(painter, QRectF(1, top, width() - 2, kSmallName), label(layout_), TextStyle::ListRowStrong,
             isChecked() && !look.palette.highContrast ? look.accentColor() : look.palette.primary, Qt::AlignHCenter,
             Elide::Middle);
}

void LayoutCard::paintLarge(QPainter& painter, const ControlLook& look) const {
  const QRectF box = ground();
  if (isChecked()) {
    drawRounded(painter, box, kCardCorner, look.palette.selection);
  } else {
    drawRounded(painter, box, kCardCorner, palette().color(QPalette::Base));
    if (underMouse()) drawRounded(painter, box, kCardCorner, look.palette.tile);
    drawInnerLine(painter, box, kCardCorner, hairline(painter), look.palette.tileEdge);
  }
  const double left = picture_->x();
  const double bottom = picture_->geometry().bottom() + 1;
  const double space = picture_->width();
  const Qt::LayoutDirection direction = layoutDirection();
  const Qt::Alignment side = direction == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft;
  drawTextIn(painter, QRectF(left, bottom + kNameBelow - 10, space, 20), label(layout_), TextStyle::Title,
             look.palette.primary, side);
  painter.setFont(descriptionFont());
  painter.setPen(look.palette.secondary);
  drawSentence(painter, QRectF(left, bottom + kTextBelow, space, lineHeight() * kDescriptionLines),
               description(layout_), direction);
  if (isChecked()) {
    drawInnerLine(painter, box.adjusted(-1, -1, 1, 1), kCardCorner + 1, kLine, look.accentColor());
    const double x = direction == Qt::RightToLeft ? box.left() + kBadgeRadius / 2 : box.right() - kBadgeRadius / 2;
    const QPointF middle(x, box.top() + kBadgeRadius / 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.accentColor());
    painter.drawEllipse(middle, kBadgeRadius, kBadgeRadius);
    drawControlSymbol(painter, u"checkmark"_s, QRectF(middle - QPointF(7, 7), QSizeF(14, 14)),
                      look.palette.inkOnAccent);
  }
  if (hasFocus() && byKeyboard_) drawFocusLine(painter, box.adjusted(3, 3, -3, -3), kCardCorner - 3, look);
}

}  // namespace tarnwick
