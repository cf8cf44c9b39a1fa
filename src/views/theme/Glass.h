#pragma once

#include <QMargins>
#include <QPainter>
#include <QPixmap>
#include <QRectF>
#include <QRegion>

#include "views/theme/Palette.h"

namespace tarnwick {

/// Paints one pane of glass: body, rim and the shadow around it. The picture is kept, and since it only differs at its
/// ends a pane of any width costs a pixmap of two corners and a strip between them. Strips are laid side by side and
/// never stretched: a stretched picture would wake Qt's worker threads, and a dock is painted every second.
class Glass {
 public:
  /// Space that the shadow and the outer line take around a pane.
  static QMargins margins(const GlassColors& colors, double scale);

  /// Paints a pane at `rect`, which should lie on whole device pixels. `corner` and the shadow are multiplied by
  /// `scale`. Colours without a shadow and an outline make a pane without soft corners, for a window that is cut to
  /// outline(). Where `exposed` is given, only what lies in it is painted.
  void paint(QPainter& painter, const QRectF& rect, const GlassColors& colors, double corner, double scale,
             const QRectF& exposed = {});

  /// A rounded rectangle as a region of whole pixels.
  static QRegion outline(const QRect& rect, double corner);

 private:
  struct Key {
    GlassColors colors;
    double height = 0, corner = 0, scale = 0, ratio = 0;
    bool operator==(const Key&) const = default;
  };

  static QPixmap render(const Key& key);
  void blit(QPainter& painter, const QRect& pane, const QRect& exposed) const;

  Key key_;
  QPixmap picture_;
};

/// The rounded rectangle that everything with corners is made of.
void drawRounded(QPainter& painter, const QRectF& rect, double corner, const QColor& fill);
/// A line just inside the edge of a rounded rectangle.
void drawInnerLine(QPainter& painter, const QRectF& rect, double corner, double width, const QColor& color);
/// A dashed line of one device pixel just inside the edge.
void drawDashed(QPainter& painter, const QRectF& rect, double corner, const QColor& color);
/// The width of a line of one device pixel, in the painter's units.
double hairline(const QPainter& painter);

}  // namespace tarnwick
