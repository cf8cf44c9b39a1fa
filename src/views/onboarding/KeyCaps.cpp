#include "views/onboarding/KeyCaps.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "views/controls/ControlLook.h"
#include "views/controls/ControlTheme.h"
#include "views/theme/Glass.h"

namespace tarnwick {

namespace {

constexpr int kHeight = 20;
constexpr int kPadding = 7;
constexpr int kGap = 4;
constexpr double kCapCorner = 5;

int widthOf(const QString& cap) {
  const int text = static_cast<int>(std::ceil(TextLine(cap, TextStyle::Caption).width()));
  return std::max(kHeight, text + kPadding * 2);
}

}  // namespace

KeyCaps::KeyCaps(const QString& key, QWidget* parent)
    : QLabel(key, parent), caps_(key.split(QLatin1Char('+'), Qt::SkipEmptyParts)) {
  setAccessibleName(key);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize KeyCaps::sizeHint() const {
  int width = kGap * static_cast<int>(std::max<qsizetype>(0, caps_.size() - 1));
  for (const QString& cap : caps_) width += widthOf(cap);
  return {width, theme::kControlHeight};
}

void KeyCaps::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Palette& palette = lookOf(*this).palette;
  double x = 0;
  for (const QString& cap : caps_) {
    const QRectF box(x, (height() - kHeight) / 2.0, widthOf(cap), kHeight);
    drawRounded(painter, box, kCapCorner, palette.tab);
    drawTextIn(painter, box, cap, TextStyle::Caption, palette.primary, Qt::AlignHCenter);
    x += box.width() + kGap;
  }
}

}  // namespace tarnwick
