#include "views/controls/TipBubble.h"

#include <QPainter>
#include <cmath>

#include "views/controls/Mirroring.h"
#include "views/controls/WrappedText.h"
#include "views/theme/Theme.h"

namespace tarnwick {

TipBubble::TipBubble(QWidget* parent)
    : QWidget(parent), palette_(Palette::make(DockStyle::DarkGlass, Backdrop::Plain, false)) {
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void TipBubble::setText(const QString& text) {
  if (text == text_) return;
  text_ = text;
  setAccessibleName(text);
  updateGeometry();
  update();
}

void TipBubble::setLook(DockStyle style, Backdrop backdrop) {
  // A tip is a small panel, and panels have grounds of their own that the scheme's text is meant for.
  const bool light = Palette::make(style, backdrop, false).light;
  palette_ = Palette::make(light ? DockStyle::LightGlass : DockStyle::DarkGlass, backdrop, false);
  isCut_ = backdrop == Backdrop::Opaque;
  cut();
  updateGeometry();
  update();
}

QMargins TipBubble::margins() const { return Glass::margins(palette_.panel, theme::kTipShadowScale); }

QSize TipBubble::sizeHint() const {
  const QSizeF size = WrappedText(text_, TextStyle::Body, theme::kBubbleTextWidth).size;
  const QSizeF pane(size.width() + theme::kTipPaddingX * 2, size.height() + theme::kTipPaddingY * 2);
  return QSize(static_cast<int>(std::ceil(pane.width())), static_cast<int>(std::ceil(pane.height())))
      .grownBy(margins());
}

void TipBubble::resizeEvent(QResizeEvent*) { cut(); }

void TipBubble::cut() {
  if (isCut_)
    setMask(Glass::outline(rect().marginsRemoved(margins()), theme::kTipCorner));
  else
    clearMask();
}

void TipBubble::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRect pane = rect().marginsRemoved(margins());
  // The shadow of a tip is smaller than a panel's, its corner is the specified one.
  glass_.paint(painter, pane, palette_.panel, theme::kTipCorner / theme::kTipShadowScale, theme::kTipShadowScale);
  WrappedText text(text_, TextStyle::Body, theme::kBubbleTextWidth);
  const double left = pane.left() + (pane.width() - text.size.width()) / 2;
  const double top = pane.top() + (pane.height() - text.size.height()) / 2;
  painter.setPen(palette_.primary);
  text.draw(painter, {std::round(left), std::round(top)}, Mirroring(*this).isMirrored());
}

}  // namespace tarnwick
