#include "views/theme/SnapshotScenery.h"

#include <QLatin1StringView>
#include <QLinearGradient>
#include <QPainterPath>
#include <QRadialGradient>
#include <algorithm>
#include <array>
#include <cmath>

#include "views/theme/Glass.h"
#include "views/theme/Palette.h"
#include "views/theme/SymbolTable.h"
#include "views/theme/Symbols.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// The colours of a landscape, from the sky down to the water, and where its sun is.
struct Mood {
  QRgb skyTop, skyMiddle, skyBottom, sun, farHill, nearHill, water;
  double sunX, sunY;
};

constexpr std::array<Mood, SnapshotScenery::landscapes> kMoods = {{
    {0xff1a2942, 0xff3d5c77, 0xffc8a684, 0xffffefd6, 0xff55738a, 0xff20455b, 0xff3a6078, 0.66, 0.47},
    {0xff9fc9e2, 0xffcfe5ea, 0xfffdf1de, 0xfff2a45c, 0xffa9cdd3, 0xff74aab1, 0xffbfdde0, 0.74, 0.26},
    {0xff4a3772, 0xff9a5f86, 0xffe9a384, 0xffffe3c2, 0xff6b4f7d, 0xff33304f, 0xff5a4a70, 0.60, 0.44},
    {0xff2c6f86, 0xff64a7a8, 0xffbfe3c9, 0xfff6efcf, 0xff3d8184, 0xff1d4d57, 0xff3a7f86, 0.36, 0.36},
    {0xff3d4f86, 0xff8a83a8, 0xfff0b7a0, 0xffffe9d0, 0xff65709a, 0xff2f3a63, 0xff55618f, 0.47, 0.46},
    {0xff1b2030, 0xff343f55, 0xff5d6c88, 0xffe6ecf5, 0xff333d52, 0xff161b28, 0xff2a3346, 0.78, 0.22},
}};

/// Rounded hills from one side to the other, down to `foot`.
QPainterPath hills(const QRectF& rect, double crest, double swing, double phase, double foot) {
  QPainterPath path(QPointF(rect.left(), foot));
  const double step = std::max(1.0, rect.width() / 160);
  for (double x = 0; x < rect.width() + step; x += step) {
    const double at = x / rect.height();
    const double rise = std::sin(at * 2.1 + phase) * 0.5 + std::sin(at * 3.9 + phase * 1.7) * 0.28 +
                        std::sin(at * 1.1 + phase * 0.6) * 0.45;
    path.lineTo(rect.left() + std::min(x, rect.width()), rect.top() + rect.height() * (crest - swing * rise));
  }
  path.lineTo(rect.right(), foot);
  path.closeSubpath();
  return path;
}

/// A plate of two colours with an outline drawn on it: a symbol of the program's or one of its own.
struct Icon {
  QLatin1StringView name;
  QRgb top, bottom;
  QLatin1StringView symbol;
  QLatin1StringView drawing = {};
};

constexpr QRgb kTeal[] = {0xff3fa09b, 0xff236f70};
constexpr QRgb kSlate[] = {0xff7390bd, 0xff47628f};
constexpr QRgb kViolet[] = {0xff7d71cc, 0xff4a4196};
constexpr QRgb kCoal[] = {0xff454b55, 0xff262a31};
constexpr QRgb kSky[] = {0xff6b8ae8, 0xff3d59b0};
constexpr QRgb kRose[] = {0xffd8738c, 0xff9c4260};
constexpr QRgb kLeaf[] = {0xff5fae86, 0xff33775a};
constexpr QRgb kSand[] = {0xffd9a55c, 0xff9d6c2d};

constexpr std::array kIcons = {
    Icon{"browser"_L1, kTeal[0], kTeal[1], {}, "O10 10 7.4M13.2 6.8L11.5 11.5L6.8 13.2L8.5 8.5Z"_L1},
    Icon{"calculator"_L1, kCoal[0], kCoal[1], "plus.forwardslash.minus"_L1},
    Icon{"calendar"_L1, kRose[0], kRose[1], "calendar"_L1},
    Icon{"camera"_L1, kCoal[0], kCoal[1], "camera.viewfinder"_L1},
    Icon{"compositor"_L1, kCoal[0], kCoal[1], "macwindow.on.rectangle"_L1},
    Icon{"documents"_L1, kSky[0], kSky[1], "note.text"_L1},
    Icon{"editor"_L1, kViolet[0], kViolet[1], {}, "M7.2 5.6L2.8 10L7.2 14.4M12.8 5.6L17.2 10L12.8 14.4"_L1},
    Icon{"files"_L1, kSlate[0], kSlate[1], "folder"_L1},
    Icon{"fonts"_L1, kSand[0], kSand[1], {}, "M4.6 16L10 3.8L15.4 16M6.6 11.8H13.4"_L1},
    Icon{"indexer"_L1, kSlate[0], kSlate[1], "magnifyingglass"_L1},
    Icon{"mail"_L1, kSky[0], kSky[1], "envelope"_L1},
    Icon{"maps"_L1, kLeaf[0], kLeaf[1], "pin"_L1},
    Icon{"messages"_L1,
         kLeaf[0],
         kLeaf[1],
         {},
         "M5.6 3.6H14.4C16 3.6 17 4.6 17 6.2V11C17 12.6 16 13.6 14.4 13.6H9.6L6.2 16.6V13.6H5.6C4 13.6 3 12.6 3 "
         "11V6.2C3 "
         "4.6 4 3.6 5.6 3.6Z"_L1},
    Icon{"music"_L1, kRose[0], kRose[1], "music.note"_L1},
    Icon{"photos"_L1, kSand[0], kSand[1], "photo"_L1},
    Icon{"player"_L1, kRose[0], kRose[1], "play.rectangle"_L1},
    Icon{"settings"_L1, kCoal[0], kCoal[1], "slider.horizontal.3"_L1},
    Icon{"software"_L1, kTeal[0], kTeal[1], "bag"_L1},
    Icon{"system monitor"_L1, kLeaf[0], kLeaf[1], "chart.xyaxis.line"_L1},
    Icon{"terminal"_L1, kCoal[0], kCoal[1], {}, "M4 5.4L8.6 10L4 14.6M10.6 14.6H16.2"_L1},
    Icon{"text to speech and dictation"_L1, kViolet[0], kViolet[1], "waveform"_L1},
    Icon{"weather"_L1, kSky[0], kSky[1], "cloud.sun"_L1},
};

constexpr double kIconCorner = 0.26;
constexpr double kIconGlyph = 0.52;
constexpr int kIconRim = 41;  ///< Of 255.

}  // namespace

void SnapshotScenery::paintLandscape(QPainter& painter, const QRectF& rect, int which) {
  const Mood& mood = kMoods[static_cast<std::size_t>(which % landscapes)];
  const double shore = rect.top() + rect.height() * 0.62;
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.setPen(Qt::NoPen);
  QLinearGradient sky(0, rect.top(), 0, shore);
  sky.setColorAt(0, QColor::fromRgb(mood.skyTop));
  sky.setColorAt(0.58, QColor::fromRgb(mood.skyMiddle));
  sky.setColorAt(1, QColor::fromRgb(mood.skyBottom));
  painter.fillRect(rect, sky);

  const QPointF sun(rect.left() + rect.width() * mood.sunX, rect.top() + rect.height() * mood.sunY);
  QRadialGradient halo(sun, rect.height() * 0.7);
  QColor light = QColor::fromRgb(mood.sun);
  light.setAlpha(90);
  halo.setColorAt(0, light);
  light.setAlpha(0);
  halo.setColorAt(1, light);
  painter.fillRect(rect, halo);
  painter.setBrush(QColor::fromRgb(mood.sun));
  painter.drawEllipse(sun, rect.height() * 0.085, rect.height() * 0.085);

  const double phase = which * 1.9;
  const QColor far = QColor::fromRgb(mood.farHill);
  const QColor near = QColor::fromRgb(mood.nearHill);
  painter.fillPath(hills(rect, 0.50, 0.15, phase, shore), faded(far, 0.55));
  painter.fillPath(hills(rect, 0.54, 0.11, phase + 2.4, shore), far);
  painter.fillPath(hills(rect, 0.57, 0.07, phase + 4.1, shore), near);
  QLinearGradient water(0, shore, 0, rect.bottom());
  water.setColorAt(0, QColor::fromRgb(mood.water));
  water.setColorAt(1, near);
  painter.fillRect(QRectF(QPointF(rect.left(), shore), rect.bottomRight()), water);
  // What the water throws back of the sun.
  for (int i = 0; i < 7; ++i) {
    QColor gleam = QColor::fromRgb(mood.sun);
    gleam.setAlpha(96 - i * 12);
    const double width = rect.height() * (0.10 + 0.035 * i) * (i % 2 == 0 ? 1 : 0.6);
    const double y = shore + rect.height() * (0.02 + 0.045 * i);
    drawRounded(painter, QRectF(sun.x() - width / 2, y, width, rect.height() * 0.008), rect.height() * 0.004, gleam);
  }
  painter.restore();
}

QPixmap SnapshotScenery::icon(const QString& name, int size, double ratio) {
  const auto icon = std::ranges::find(kIcons, name, &Icon::name);
  if (icon == kIcons.end() || size <= 0) return {};
  QPixmap picture(QSize(size, size) * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF box(0, 0, size, size);
  const double corner = size * kIconCorner;
  QLinearGradient plate(0, 0, 0, size);
  plate.setColorAt(0, QColor::fromRgb(icon->top));
  plate.setColorAt(1, QColor::fromRgb(icon->bottom));
  painter.setPen(Qt::NoPen);
  painter.setBrush(plate);
  painter.drawRoundedRect(box, corner, corner);
  drawInnerLine(painter, box, corner, hairline(painter), QColor(255, 255, 255, kIconRim));
  const double side = size * kIconGlyph;
  const QRectF glyph((size - side) / 2, (size - side) / 2, side, side);
  const QColor ink(255, 255, 255, 240);
  if (icon->drawing.isEmpty()) {
    Symbols::draw(painter, icon->symbol, glyph, ink);
  } else {
    painter.translate(glyph.topLeft());
    painter.scale(side / 20, side / 20);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ink, Symbols::strokeWidth(side) * 20 / side, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(parseSymbol(icon->drawing));
  }
  return picture;
}

}  // namespace tarnwick
