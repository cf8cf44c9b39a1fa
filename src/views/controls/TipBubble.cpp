#include "views/controls/TipBubble.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "views/controls/Mirroring.h"
#include "views/controls/WrappedText.h"
#include "views/theme/Theme.h"

namespace tarnwick {
namespace {

constexpr QSizeF kPicture(180, 112);
constexpr double kPictureGap = 8;
constexpr double kIcon = 40;  ///< What stands in for a picture.
constexpr double kPictureCorner = 6;

}  // namespace

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

void TipBubble::setPictures(const QList<QImage>& pictures, const QPixmap& standIn) {
  standIn_ = standIn;
  pictures_ = pictures;
  updateGeometry();
  update();
}

QSizeF TipBubble::picturesSize() const {
  if (pictures_.isEmpty()) return {};
  const double count = static_cast<double>(pictures_.size());
  return {count * kPicture.width() + (count - 1) * kPictureGap, kPicture.height() + kPictureGap};
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
  const QSizeF pictures = picturesSize();
  const QSizeF pane(std::max(size.width(), pictures.width()) + theme::kTipPaddingX * 2,
                    size.height() + pictures.height() + theme::kTipPaddingY * 2);
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
  const QSizeF pictures = picturesSize();
  const double top = pane.top() + pictures.height() + (pane.height() - pictures.height() - text.size.height()) / 2;
  const QPointF corner(pane.left() + (pane.width() - pictures.width()) / 2, pane.top() + theme::kTipPaddingY);
  paintPictures(painter, {corner, pictures});
  painter.setPen(palette_.primary);
  text.draw(painter, {std::round(left), std::round(top)}, Mirroring(*this).isMirrored());
}

void TipBubble::paintPictures(QPainter& painter, const QRectF& row) const {
  painter.save();
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  for (qsizetype i = 0; i < pictures_.size(); ++i) {
    const double left = row.left() + static_cast<double>(i) * (kPicture.width() + kPictureGap);
    const QSizeF size = pictures_[i].isNull() ? kPicture : QSizeF(pictures_[i].size());
    QRectF place(QPointF(), size.scaled(kPicture, Qt::KeepAspectRatio));
    place.moveCenter({left + kPicture.width() / 2, row.top() + kPicture.height() / 2});
    QPainterPath outline;
    outline.addRoundedRect(place, kPictureCorner, kPictureCorner);
    if (pictures_[i].isNull()) {
      painter.fillPath(outline, palette_.well);
      QRectF icon(0, 0, kIcon, kIcon);
      icon.moveCenter(place.center());
      if (!standIn_.isNull()) painter.drawPixmap(icon, standIn_, standIn_.rect());
      continue;
    }
    painter.save();
    painter.setClipPath(outline);
    painter.drawImage(place, pictures_[i]);
    painter.restore();
    painter.setPen(QPen(palette_.separator, 1));
    painter.drawPath(outline);
  }
  painter.restore();
}

}  // namespace tarnwick
