#pragma once

#include <QVBoxLayout>
#include <QWidget>

#include "views/controls/ControlLook.h"
#include "views/controls/ControlTheme.h"
#include "views/theme/Glass.h"

namespace tarnwick {

/// A pane of glass with space around it for its shadow, as large as its content wants it: what opens beside a tile or
/// below the status item. Derive from it and put controls into frame().
class GlassPane : public QWidget, public LookSource {
  Q_OBJECT
 public:
  /// How a pane differs from the others, in device-independent pixels.
  struct Shape {
    double shadowScale = theme::kPanelShadowScale;  ///< Of the dock's shadow.
    int padding = theme::kPanelPadding;             ///< Between its edge and what is on it.
  };

  ~GlassPane() override;

  const ControlLook& look() const override { return look_; }
  /// The look of the dock that the pane is beside.
  void setDockLook(DockStyle style, Backdrop backdrop, bool monochrome);
  /// Space around the pane for its shadow; none where nothing composites.
  QMargins margins() const;

 Q_SIGNALS:
  /// sizeHint() is another than before.
  void sizeChanged();

 protected:
  GlassPane() : GlassPane(Shape()) {}
  explicit GlassPane(const Shape& shape);

  /// Where the content goes; the pane keeps its padding and its shadow clear.
  QVBoxLayout& frame() { return *frame_; }
  /// Another look for the pane and all that is on it.
  void setLook(const ControlLook& look);
  /// Listens to a content within a scroll area, which does not pass on that its content wants another size.
  void follow(QWidget* content);
  /// Of the corners, in logical pixels.
  virtual double corner() const;
  /// The glass; all but the margins unless it is on its way to another size.
  virtual QRectF pane() const { return rect().marginsRemoved(margins()); }

  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  Shape shape_;
  ControlLook look_;
  Glass glass_;
  QVBoxLayout* frame_;
  QSize announced_;
};

}  // namespace tarnwick
