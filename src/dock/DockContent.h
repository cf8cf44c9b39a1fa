#pragma once

#include <QMargins>
#include <QRegion>
#include <QWidget>

namespace tarnwick {

/// What the controller passes to a dock's content about the panel that it fills.
struct DockGeometry {
  QString display;         ///< Screen::id
  QSizeF panel;            ///< The slot of the dock, without margins.
  double scale = 1;        ///< Of everything that is drawn.
  bool composited = true;  ///< Whether the window can be translucent.
  bool blurred = false;    ///< Whether the compositor blurs behind it.
  bool atTop = false;      ///< At the display's upper edge.
  bool floats = false;     ///< Moved by the user.

  bool operator==(const DockGeometry&) const = default;
};

/// The widget that fills one panel. The view layer makes it; the controller only asks for its shape.
class DockContent : public QWidget {
  Q_OBJECT
 public:
  using QWidget::QWidget;

  virtual void configure(const DockGeometry& geometry) = 0;
  /// The width that the glass needs at a scale, whatever its row measures: for the names of the profiles, where they
  /// may show, for the "Add Widgets…" text, and for what is held over it; 0 for no more than it has.
  virtual double leastWidth(double) const { return 0; }
  /// Space that the content paints on around the panel's slot.
  virtual QMargins margins() const = 0;
  /// In the content's own coordinates, margins included.
  virtual QRegion outline() const = 0;
  virtual QRegion inputRegion() const = 0;

 Q_SIGNALS:
  /// Outline or input region changed.
  void shapeChanged();
  void leastWidthChanged();
};

}  // namespace tarnwick
