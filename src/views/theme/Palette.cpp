#include "views/theme/Palette.h"

#include <QHash>
#include <algorithm>
#include <array>

#include "views/theme/DesktopLook.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr QRgb kInk = 0x0E1118;

QColor tone(QRgb rgb, double percent = 100) {
  QColor color(rgb);
  color.setAlphaF(static_cast<float>(percent / 100));
  return color;
}
QColor white(double percent) { return tone(0xFFFFFF, percent); }
QColor black(double percent) { return tone(0x000000, percent); }
QColor ink(double percent) { return tone(kInk, percent); }

QColor mixed(const QColor& color, const QColor& with, double share) {
  const auto blend = [share](float a, float b) { return static_cast<float>(a * (1 - share) + b * share); };
  return QColor::fromRgbF(blend(color.redF(), with.redF()), blend(color.greenF(), with.greenF()),
                          blend(color.blueF(), with.blueF()));
}

GlassColors darkGlass(Backdrop backdrop) {
  GlassColors glass;
  const double top = backdrop == Backdrop::Blurred ? 80 : backdrop == Backdrop::Plain ? 88 : 100;
  const double bottom = backdrop == Backdrop::Blurred ? 84 : backdrop == Backdrop::Plain ? 90 : 100;
  glass.bodyTop = tone(backdrop == Backdrop::Blurred ? 0x1C1F27 : 0x1B1E25, top);
  glass.bodyBottom = tone(0x12141A, bottom);
  glass.rim = white(10);
  glass.topLine = white(12);
  glass.outline = black(45);
  glass.shadow = black(32);
  return glass;
}

GlassColors lightGlass(Backdrop backdrop) {
  GlassColors glass;
  const double percent = backdrop == Backdrop::Blurred ? 86 : backdrop == Backdrop::Plain ? 90 : 100;
  glass.bodyTop = tone(0xFAFBFC, percent);
  glass.bodyBottom = tone(0xF0F2F5, percent);
  glass.topLine = white(90);
  glass.outline = ink(14);
  glass.shadow = black(23);
  return glass;
}

GlassColors liquidGlass(Backdrop backdrop) {
  GlassColors glass;
  glass.bodyTop = backdrop == Backdrop::Opaque ? tone(0x4A5668) : white(26);
  glass.bodyBottom = backdrop == Backdrop::Opaque ? tone(0x2C3644) : white(7);
  glass.rim = white(34);
  glass.rimWidth = 1;
  glass.topLine = white(55);
  glass.topLineWidth = 1.5;
  glass.bottomLine = white(25);
  glass.outline = black(22);
  glass.shadow = black(32);
  return glass;
}

GlassColors plainGlass(DockStyle style) {
  GlassColors glass;
  if (style == DockStyle::Black) {
    glass.bodyTop = glass.bodyBottom = tone(0x0A0A0C);
    glass.rim = white(14);
    glass.shadow = black(32);
  } else if (style == DockStyle::White) {
    glass.bodyTop = glass.bodyBottom = tone(0xFFFFFF);
    glass.outline = ink(12);
    glass.shadow = black(22);
  }
  return glass;
}

GlassColors glassOf(DockStyle style, Backdrop backdrop) {
  switch (style) {
    case DockStyle::DarkGlass:
      return darkGlass(backdrop);
    case DockStyle::LightGlass:
      return lightGlass(backdrop);
    case DockStyle::LiquidGlass:
      return liquidGlass(backdrop);
    case DockStyle::Black:
    case DockStyle::White:
    case DockStyle::Transparent:
      return plainGlass(style);
  }
  return {};
}

GlassColors panelOf(bool light, Backdrop backdrop) {
  const bool opaque = backdrop == Backdrop::Opaque;
  GlassColors panel;
  panel.bodyTop = light ? tone(0xFAFBFC, opaque ? 100 : 96) : tone(0x1E2129, opaque ? 100 : 94);
  panel.bodyBottom = light ? tone(0xF2F4F7, opaque ? 100 : 97) : tone(0x15171D, opaque ? 100 : 96);
  panel.rim = light ? ink(10) : white(10);
  panel.shadow = black(light ? 24 : 40);
  return panel;
}

PictureColors picturesOf(bool light, bool monochrome) {
  PictureColors pictures;
  pictures.sunTop = tone(monochrome ? 0xD8DBE0 : 0xFFD15C);
  pictures.sunBottom = tone(monochrome ? 0x9A9FA8 : 0xFFB52E);
  pictures.sunRay = tone(monochrome ? 0xD8DBE0 : 0xFFBC3D);
  pictures.cloudTop = tone(monochrome ? 0xD8DBE0 : light ? 0xD3DAE6 : 0xEEF2F7);
  pictures.cloudBottom = tone(monochrome ? 0x9A9FA8 : light ? 0x8FA1C0 : 0xB9C4D8);
  pictures.face = tone(light ? 0xFFFFFF : 0xF4F6F8);
  pictures.faceRim = tone(light ? 0xDCDFE4 : 0xD5D7DB);
  pictures.faceInk = tone(0x12151C);
  pictures.faceTick = tone(0x12151C, 45);
  pictures.faceSecond = monochrome ? pictures.faceInk : tone(0xE8552D);
  pictures.nightFace = tone(0x0B0D11);
  pictures.nightRim = tone(0x23262D);
  pictures.nightInk = tone(0xF4F6F8);
  pictures.nightTick = tone(0xF4F6F8, 45);
  pictures.nightSecond = monochrome ? pictures.nightInk : tone(0xFF9F43);
  pictures.folderBack = tone(monochrome ? 0x7C828C : 0x466BAD);
  pictures.folderFront = tone(monochrome ? 0xA9AEB7 : 0x5B97FF);
  pictures.folderEdge = white(40);
  pictures.folderGlyph = white(100);
  // A sheet is distinguishable from what is around it, white panels included.
  pictures.paper = tone(light ? 0xD3DAE6 : 0xEEF1F6);
  pictures.paperBehind = tone(light ? 0xAEB7C7 : 0xC7CCDB);
  pictures.paperInk = tone(0x12151C, light ? 45 : 28);
  pictures.tray = tone(0x5F6B7D);
  pictures.trayEdge = tone(0x8A98AE);
  pictures.plateTop = tone(monochrome ? 0x7C828C : 0x6E8FBB);
  pictures.plateBottom = tone(monochrome ? 0x565C66 : 0x46638F);
  pictures.plateRim = white(16);
  pictures.plateInk = white(100);
  return pictures;
}

void fillDark(Palette& palette) {
  palette.primary = white(94);
  palette.secondary = white(70);
  palette.tertiary = white(42);
  palette.track = white(13);
  palette.tile = white(6.5);
  palette.tileHover = white(11);
  palette.tilePressed = white(16);
  palette.tileOpen = white(13);
  palette.tileDragged = tone(0x2C303A);
  palette.tileEdge = white(7);
  palette.hairline = white(9);
  palette.well = tone(0x04060A, 42);
  palette.split = black(45);
  palette.selection = tone(0x5B97FF, 20);
  palette.separator = white(22);
  palette.mark = white(81);
  palette.inkOnAccent = tone(0x0B0D12);
  palette.toggleOff = white(10);
  palette.tab = white(14);
  palette.button = white(9);
  palette.buttonHover = white(13);
  palette.buttonPressed = white(6);
  palette.gapOutline = white(28);
}

void fillLight(Palette& palette) {
  palette.primary = ink(92);
  palette.secondary = ink(66);
  palette.tertiary = ink(42);
  palette.track = ink(11);
  palette.tile = ink(5);
  palette.tileHover = ink(9);
  palette.tilePressed = ink(13);
  palette.tileOpen = ink(11);
  palette.tileDragged = tone(0xFFFFFF);
  palette.tileEdge = ink(5);
  palette.hairline = ink(10);
  palette.well = white(85);
  palette.split = ink(16);
  palette.selection = tone(0x1F62DC, 13);
  palette.separator = ink(22);
  palette.mark = ink(80);
  palette.inkOnAccent = white(100);
  palette.toggleOff = ink(10);
  palette.tab = ink(14);
  palette.button = ink(9);
  palette.buttonHover = ink(13);
  palette.buttonPressed = ink(6);
  palette.gapOutline = ink(28);
}

/// What a style paints on its tiles in place of its scheme's tile colours.
void applyStyle(Palette& palette, DockStyle style, Backdrop backdrop) {
  const bool opaque = backdrop == Backdrop::Opaque;
  switch (style) {
    case DockStyle::DarkGlass:
    case DockStyle::LightGlass:
      break;
    case DockStyle::LiquidGlass:
      palette.primary = white(97);
      palette.secondary = white(86);
      palette.tile = tone(0x10151F, opaque ? 100 : 66);
      palette.tileHover = tone(0x1E2531, opaque ? 100 : 70);
      palette.tilePressed = tone(0x2A3240, opaque ? 100 : 74);
      palette.tileOpen = tone(0x232A37, opaque ? 100 : 72);
      palette.tileEdge = white(16);
      palette.dotRing = black(45);
      break;
    case DockStyle::Black:
      palette.tile = white(7.5);
      break;
    case DockStyle::White:
      palette.tile = tone(0xF1F3F6);
      palette.tileHover = tone(0xE9ECF0);
      palette.tilePressed = tone(0xE1E4E9);
      palette.tileOpen = tone(0xE5E8ED);
      palette.tileEdge = ink(4);
      break;
    case DockStyle::Transparent:
      palette.tile = tone(0x14161C, opaque ? 100 : 84);
      palette.tileHover = tone(0x1F222A, opaque ? 100 : 86);
      palette.tilePressed = tone(0x2A2E37, opaque ? 100 : 88);
      palette.tileOpen = tone(0x242831, opaque ? 100 : 87);
      palette.tileEdge = white(12);
      palette.dotRing = black(45);
      break;
  }
}

GlassColors outlined(QRgb body, const QColor& line, double shadow) {
  GlassColors glass;
  glass.bodyTop = glass.bodyBottom = tone(body);
  glass.rim = line;
  glass.rimWidth = 1;
  glass.shadow = black(shadow);
  return glass;
}

/// Takes the place of what a style paints, which may be translucent or faint.
void applyHighContrast(Palette& palette) {
  const bool light = palette.light;
  const auto either = [light](QRgb bright, QRgb dark) { return tone(light ? bright : dark); };
  palette.highContrast = true;
  palette.primary = palette.mark = palette.gapOutline = either(0x000000, 0xFFFFFF);
  palette.secondary = either(0x1A1A1A, 0xF0F0F0);
  palette.tertiary = either(0x333333, 0xD8D8D8);
  palette.track = either(0x8A8A8A, 0x6A6A6A);
  palette.tile = palette.tileDragged = palette.well = either(0xFFFFFF, 0x000000);
  palette.tileHover = palette.button = either(0xE4E4E4, 0x262626);
  palette.tilePressed = palette.tab = palette.buttonHover = either(0xCCCCCC, 0x3A3A3A);
  palette.tileOpen = palette.toggleOff = palette.buttonPressed = either(0xD6D6D6, 0x303030);
  palette.tileEdge = palette.separator = either(0x404040, 0xC8C8C8);
  palette.hairline = palette.split = either(0x5A5A5A, 0x9A9A9A);
  palette.selection = either(0xBFD4FF, 0x00377F);
  palette.inkOnAccent = either(0xFFFFFF, 0x000000);
  palette.dotRing = QColor();
  palette.glass = outlined(light ? 0xFFFFFF : 0x000000, palette.primary, 32);
  palette.panel = outlined(light ? 0xFFFFFF : 0x000000, palette.primary, 40);
  palette.pictures.plateTop = tone(0x2E4566);
  palette.pictures.plateBottom = tone(0x22344E);
}

}  // namespace

DockStyle dockStyleNamed(const QString& name) {
  static const QHash<QString, DockStyle> styles = {{u"darkGlass"_s, DockStyle::DarkGlass},
                                                   {u"lightGlass"_s, DockStyle::LightGlass},
                                                   {u"liquidGlass"_s, DockStyle::LiquidGlass},
                                                   {u"black"_s, DockStyle::Black},
                                                   {u"white"_s, DockStyle::White},
                                                   {u"transparent"_s, DockStyle::Transparent}};
  return styles.value(name, DockStyle::DarkGlass);
}

Palette Palette::make(DockStyle style, Backdrop backdrop, bool monochrome) {
  return make(style, backdrop, monochrome, DesktopLook::now().highContrast);
}

Palette Palette::make(DockStyle style, Backdrop backdrop, bool monochrome, bool highContrast) {
  Palette palette;
  palette.light = style == DockStyle::LightGlass || style == DockStyle::White;
  palette.monochrome = monochrome;
  palette.dragShadow = black(45);
  palette.wordsInPrimary_ = style == DockStyle::LiquidGlass || highContrast;
  palette.light ? fillLight(palette) : fillDark(palette);
  applyStyle(palette, style, backdrop);
  palette.glass = glassOf(style, backdrop);
  palette.panel = panelOf(palette.light, backdrop);
  if (monochrome) palette.selection = palette.light ? ink(13) : white(16);
  palette.pictures = picturesOf(palette.light, monochrome);
  if (highContrast) applyHighContrast(palette);
  if (backdrop == Backdrop::Opaque) {
    // Outside the outline nothing can be translucent, so what lies outside is left away.
    palette.glass.shadow = palette.glass.outline = palette.panel.shadow = QColor();
    if (!palette.glass.rim.isValid() && palette.glass.bodyTop.isValid()) palette.glass.rim = ink(12);
  }
  return palette;
}

QColor Palette::accent(Accent accent) const {
  if (monochrome && highContrast) return primary;
  if (monochrome && accent != Accent::Foreground) {
    const bool quiet = accent == Accent::Pink || accent == Accent::Purple;
    return light ? ink(quiet ? 62 : 90) : white(quiet ? 62 : 90);
  }
  static constexpr std::array<QRgb, 8> dark = {0x5B97FF, 0x38CB80, 0x2EC4C6, 0xF5C542,
                                               0xFF9F43, 0xFF6A66, 0xFF7BAE, 0xA48BFF};
  static constexpr std::array<QRgb, 8> bright = {0x1F62DC, 0x0F7A47, 0x09757A, 0x8F6200,
                                                 0xAB5400, 0xCF2F36, 0xC5306E, 0x6743D9};
  if (accent == Accent::Foreground) return primary;
  const auto index = static_cast<std::size_t>(accent) - 1;
  const QColor color = tone(light ? bright[index] : dark[index]);
  constexpr double darker = 0.22;  // So that white has a contrast of 7 to 1 on it.
  return highContrast && light ? mixed(color, black(100), darker) : color;
}

QColor Palette::accentWord(Accent accent) const {
  if (wordsInPrimary_ || accent == Accent::Foreground) return primary;
  const QColor color = this->accent(accent);
  if (monochrome) return color;
  return light ? mixed(color, QColor(0, 0, 0), 0.2) : mixed(color, QColor(255, 255, 255), 0.3);
}

BadgeColors Palette::badge(int color) const {
  if (monochrome || highContrast) return {accent(Accent::Foreground), inkOnAccent};
  // Around the wheel, a bright one and a deep one by turns.
  static constexpr std::array<QRgb, kBadgeColors> grounds = {
      0xFF9CB3, 0xAF2843, 0xFFA098, 0xAF2F09, 0xFFA47A, 0x964C04, 0xFEA849, 0x855904, 0xEAB532,
      0x766202, 0xCCC23B, 0x626A03, 0xA8CE5A, 0x3A7400, 0x7BD77F, 0x057743, 0x41DCA5, 0x017460,
      0x0BDAC9, 0x067272, 0x07D6E7, 0x016F82, 0x42CFFE, 0x006C97, 0x80C5FF, 0x0161BD, 0x9EBDFF,
      0x4B53C2, 0xB6B4FE, 0x6D47B8, 0xD1A9FF, 0x863CA4, 0xEE9AF3, 0x9A3289, 0xFF96D3, 0xA72A68};
  return {tone(grounds[static_cast<std::size_t>(color)]), color % 2 == 0 ? tone(kInk) : white(100)};
}

QColor faded(const QColor& color, double opacity) {
  QColor result = color;
  result.setAlphaF(static_cast<float>(color.alphaF() * std::clamp(opacity, 0.0, 1.0)));
  return result;
}

}  // namespace tarnwick
