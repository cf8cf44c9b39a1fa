#pragma once

#include <QPixmap>
#include <QPointF>
#include <QWidget>

namespace tarnwick {

/// Stands in for a widget while that moves, fades or grows: a picture of it, taken once and drawn wherever it is seen.
/// It covers the whole window and hides the live widget below it, which therefore is not painted; what the pointer does
/// goes through to the live widget. Whatever in the window asks to be painted meanwhile has the picture taken again.
class MovingPicture final : public QWidget {
  Q_OBJECT
 public:
  /// How the picture is drawn. Two equal looks are the same pixels.
  struct Look {
    int shift = 0;      ///< Downwards, in device pixels.
    int opacity = 255;  ///< 0 to 255.
    double scale = 1;
    QPointF fixed;  ///< What scaling leaves in its place, in the window's coordinates.

    bool operator==(const Look&) const = default;
  };

  /// Both are borrowed; `window` is a window and becomes the parent, `subject` a child of it.
  MovingPicture(QWidget* window, QWidget* subject);

  /// Where the live widget is at rest, in the window's coordinates. The picture is taken as if it were there.
  void setRestingPlace(const QPoint& place);
  /// Draws at once, unless nothing changed. The live widget must be visible.
  void present(const Look& look);
  /// Takes a picture that is not shown, so that everything that the first one needs is loaded. Before any presentation.
  void warmUp();
  /// Uncovers the live widget and lets go of the picture.
  void finish();
  bool isPresenting() const { return isPresenting_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QSize deviceSize() const;
  void take();
  void renderSubject();
  void draw();

  QWidget* subject_;
  QPoint place_;
  Look look_;
  QPixmap picture_;
  bool isPresenting_ = false;
  bool isStale_ = true;
  bool isDrawing_ = false;
};

}  // namespace tarnwick
