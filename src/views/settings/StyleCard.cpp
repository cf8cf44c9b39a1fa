#include "views/settings/StyleCard.h"

#include <QFocusEvent>
#include <QLinearGradient>
#include <QPainterPath>
#include <array>

#include "views/controls/ControlAccessible.h"
#include "views/controls/ControlTheme.h"
#include "views/theme/Glass.h"
#include "views/theme/SceneColors.h"
#include "views/theme/Theme.h"

namespace tarnwick {

namespace {

constexpr QSizeF kPicture{168, 78};
constexpr int kPadding = 7;
constexpr int kName = 26;
constexpr double kCorner = 7;
constexpr double kCardCorner = 10;
constexpr double kLine = 1.5;
constexpr double kDockHeight = 38;
constexpr double kDockInset = 5;
constexpr double kDockCorner = 11;
constexpr double kShadowScale = 0.5;
constexpr double kTileCorner = 6;
constexpr double kTileGap = 4;
constexpr std::array<double, 3> kTiles{44, 28, 34};
constexpr std::array<Accent, 3> kAccents{Accent::Orange, Accent::Green, Accent::Blue};

}  // namespace

StyleCard::StyleCard(const QString& style, const QString& name, QWidget* parent)
    : QRadioButton(name, parent), style_(style) {
  installControlAccessibility();
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void StyleCard::setDock(bool tiles, bool monochrome) {
  if (tiles == tiles_ && monochrome == monochrome_) return;
  tiles_ = tiles;
  monochrome_ = monochrome;
  update();
}

QSize StyleCard::sizeHint() const {
  return {static_cast<int>(kPicture.width()) + kPadding * 2, static_cast<int>(kPicture.height()) + kPadding + kName};
}

void StyleCard::focusInEvent(QFocusEvent* event) {
  byKeyboard_ = isKeyboardReason(event->reason());
  QRadioButton::focusInEvent(event);
}

void StyleCard::paintPicture(QPainter& painter, const QRectF& box) const {
  const SceneColors scene;
  QPainterPath frame;
  frame.addRoundedRect(box, kCorner, kCorner);
  painter.save();
  painter.setClipPath(frame);
  QLinearGradient sky(box.topLeft(), box.bottomLeft());
  sky.setColorAt(0, scene.skyTop);
  sky.setColorAt(0.55, scene.skyGlow);
  sky.setColorAt(0.56, scene.waterTop);
  sky.setColorAt(1, scene.waterBottom);
  painter.fillRect(box, sky);

  const Palette palette = Palette::make(dockStyleNamed(style_), Backdrop::Plain, monochrome_);
  double width = kDockInset * 2 + kTileGap * (kTiles.size() - 1);
  for (const double tile : kTiles) width += tile;
  QRectF dock(0, 0, width, kDockHeight);
  dock.moveCenter(box.center());
  Glass().paint(painter, dock.toAlignedRect(), palette.glass, kDockCorner / kShadowScale, kShadowScale);
  double x = dock.left() + kDockInset;
  for (std::size_t i = 0; i < kTiles.size(); ++i) {
    const QRectF tile(x, dock.top() + kDockInset, kTiles[i], kDockHeight - kDockInset * 2);
    if (tiles_) {
      drawRounded(painter, tile, kTileCorner, palette.tile);
      drawInnerLine(painter, tile, kTileCorner, hairline(painter), palette.tileEdge);
    }
    const QRectF mark(tile.left() + 7, tile.center().y() - 5, 10, 10);
    drawRounded(painter, mark, 5, palette.accent(kAccents[i]));
    const double line = tile.width() - 28;
    if (line > 8) {
      drawRounded(painter, QRectF(mark.right() + 5, mark.top(), line, 4), 2, palette.primary);
      drawRounded(painter, QRectF(mark.right() + 5, mark.top() + 6.5, line * 0.7, 3), 1.5, palette.secondary);
    }
    x += kTiles[i] + kTileGap;
  }
  painter.restore();
}

void StyleCard::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const ControlLook& look = lookOf(*this);
  if (isChecked()) {
    drawRounded(painter, rect(), kCardCorner, look.palette.selection);
    drawInnerLine(painter, rect(), kCardCorner, kLine, look.accentColor());
  } else if (underMouse()) {
    drawRounded(painter, rect(), kCardCorner, look.palette.tile);
  }
  if (hasFocus() && byKeyboard_) {
    const double inset = isChecked() ? 3 : 0;  // Within the line of the chosen one, so that both are seen.
    drawFocusLine(painter, QRectF(rect()).adjusted(inset, inset, -inset, -inset), kCardCorner - inset, look);
  }
  paintPicture(painter, QRectF(QPointF((width() - kPicture.width()) / 2, kPadding), kPicture));
  drawTextIn(painter, QRectF(1, height() - kName, width() - 2, kName), text(), TextStyle::ListRowStrong,
             isChecked() && !look.palette.highContrast ? look.accentColor() : look.palette.primary, Qt::AlignHCenter);
}

}  // namespace tarnwick
