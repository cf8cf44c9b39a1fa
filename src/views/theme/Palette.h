#pragma once

#include <QColor>
#include <QString>

namespace tarnwick {

/// How the dock looks.
enum class DockStyle { DarkGlass, LightGlass, LiquidGlass, Black, White, Transparent };

/// The style of a settings value such as "darkGlass"; dark glass for a word that is not known.
DockStyle dockStyleNamed(const QString& name);

/// What lies behind the glass decides how much of it the glass may show.
enum class Backdrop {
  Blurred,  ///< A compositor blurs what lies behind.
  Plain,    ///< A compositor shows it sharp; the glass is thicker.
  Opaque,   ///< Nothing composites: the window is cut to its outline and covers everything.
};

/// The one accent that a tile may have.
enum class Accent { Foreground, Blue, Green, Teal, Yellow, Orange, Red, Pink, Purple };

/// The colours of a pane of glass. An invalid colour is not painted.
struct GlassColors {
  QColor bodyTop, bodyBottom;
  QColor rim;           ///< A line all around, just inside.
  double rimWidth = 0;  ///< 0 for one device pixel.
  QColor topLine, bottomLine;
  double topLineWidth = 0;
  QColor outline;  ///< One device pixel, just outside.
  QColor shadow;

  bool operator==(const GlassColors&) const = default;
};

/// The colours of weather, clock faces, folders and papers, which are pictures and keep their own.
struct PictureColors {
  QColor sunTop, sunBottom, sunRay;
  QColor cloudTop, cloudBottom;
  QColor face, faceRim, faceInk, faceTick, faceSecond;
  QColor nightFace, nightRim, nightInk, nightTick, nightSecond;  ///< Of the dark clock.
  QColor folderBack, folderFront, folderEdge, folderGlyph;
  QColor paper, paperBehind, paperInk;
  QColor tray, trayEdge;
  QColor plateTop, plateBottom, plateRim, plateInk;  ///< Stands in for an icon that is missing.

  bool operator==(const PictureColors&) const = default;
};

/// The colours of a service's badge.
struct BadgeColors {
  QColor ground, ink;
};

/// Every colour that painters use, for one style. The only place in the program with colour values.
struct Palette {
  bool light = false;
  bool monochrome = false;
  bool highContrast = false;

  QColor primary, secondary, tertiary;
  QColor track;
  QColor tile, tileHover, tilePressed, tileOpen, tileDragged, tileEdge;
  QColor hairline, well, selection;
  QColor split;  ///< Across the cards of a flip clock.
  QColor separator;
  QColor mark;  ///< Neutral marks, such as the squares of the applications tile.
  QColor inkOnAccent;
  QColor toggleOff;
  QColor tab, button, buttonHover, buttonPressed;
  QColor gapOutline;  ///< Around the place that a dragged tile left.
  QColor dragShadow;
  QColor dotRing;  ///< Around running dots where the dock is clear; invalid elsewhere.
  GlassColors glass;
  GlassColors panel;  ///< Bubbles and panels.
  PictureColors pictures;

  /// With high contrast, which comes from DesktopLook, every style is one of two schemes: black or
  /// white, opaque, with a line around each thing and no text under 7 to 1.
  static Palette make(DockStyle style, Backdrop backdrop, bool monochrome);
  static Palette make(DockStyle style, Backdrop backdrop, bool monochrome, bool highContrast);

  QColor accent(Accent accent) const;
  /// The accent for words, which need more contrast than marks.
  QColor accentWord(Accent accent) const;
  /// One of kBadgeColors pairs with a contrast of 4.5 to 1 at least. In monochrome and high contrast all are alike.
  BadgeColors badge(int color) const;
  static constexpr int kBadgeColors = 36;

  bool operator==(const Palette&) const = default;

 private:
  bool wordsInPrimary_ = false;
};

/// `color` with its alpha multiplied. A spring may carry the opacity a little below 0 or above 1, which counts as
/// these.
QColor faded(const QColor& color, double opacity);

}  // namespace tarnwick
