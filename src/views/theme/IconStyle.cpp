#include "views/theme/IconStyle.h"

#include <QImage>
#include <algorithm>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kMost = 255;
constexpr double kDarkening = 0.8;  // Of white.

QRgb darkened(QRgb pixel) {
  const auto [least, most] = std::minmax({qRed(pixel), qGreen(pixel), qBlue(pixel)});
  // White has no colour and all the light.
  const double pale = static_cast<double>(least) / kMost;
  const double kept = 1 - kDarkening * pale * least / std::max(most, 1);
  const auto scaled = [kept](int channel) { return qRound(channel * kept); };
  return qRgba(scaled(qRed(pixel)), scaled(qGreen(pixel)), scaled(qBlue(pixel)), qAlpha(pixel));
}

QRgb grey(QRgb pixel) {
  const int level = qGray(pixel);
  return qRgba(level, level, level, qAlpha(pixel));
}

}  // namespace

IconStyle iconStyleNamed(const QString& name, bool dockIsDark) {
  if (name == "monochrome"_L1) return IconStyle::Monochrome;
  if (name == "dark"_L1 || (name == "auto"_L1 && dockIsDark)) return IconStyle::Dark;
  return IconStyle::Own;
}

QPixmap styledIcon(const QPixmap& icon, IconStyle style) {
  if (style == IconStyle::Own || icon.isNull()) return icon;
  QImage image = icon.toImage().convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < image.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    std::transform(line, line + image.width(), line, style == IconStyle::Dark ? darkened : grey);
  }
  return QPixmap::fromImage(image);
}

}  // namespace tarnwick
