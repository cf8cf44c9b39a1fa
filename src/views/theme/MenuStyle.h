#pragma once

#include <QProxyStyle>
#include <functional>
#include <memory>

#include "views/theme/Palette.h"

class QMenu;
class QStyleOptionMenuItem;

namespace tarnwick {

class FrameClock;
class Panels;

/// Paints the program's menus, in the colours of its windows unless a dock gives them others; everything else stays as
/// the desktop's own style has it.
class MenuStyle final : public QProxyStyle {
  Q_OBJECT
 public:
  /// Makes it the application's style, if it is not yet.
  static MenuStyle& install();

  /// The same, and follows whether windows can be translucent. Where they cannot, menus are cut to their shape.
  static void installFor(const Panels& panels);
  bool isComposited() const { return composited_; }

  /// Gives a menu that opens out of a dock of that style, and the menus within it, the colours of the dock's panels.
  static void takeDockColors(QMenu& menu, DockStyle style);
  /// Lets it and the menus within it fade in whenever they open, and out when they close: a menu is hidden at once, and
  /// its picture goes in its place. `owner` is the window that it opens out of. `clock` makes what each fades by; null
  /// lets it appear and go at once.
  void fade(QMenu& menu, QWidget* owner, const std::function<std::unique_ptr<FrameClock>()>& clock) const;

  void polish(QWidget* widget) override;
  using QProxyStyle::polish;
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;

 private:
  bool composited_ = true;
};

}  // namespace tarnwick
