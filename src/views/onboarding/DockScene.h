#pragma once

#include <QPixmap>
#include <QWidget>

namespace tarnwick {

/// A picture of a dock at the foot of a lake, painted by the dock's own painters with made-up values. Where there is
/// less space than its size it is narrower, and the dock in it smaller.
class DockScene final : public QWidget {
  Q_OBJECT
 public:
  explicit DockScene(QSize size, QWidget* parent = nullptr);

  QSize sizeHint() const override { return size_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void render();

  QSize size_;
  double scale_ = 0;  // Of the dock in the picture.
  QPixmap dock_;
};

}  // namespace tarnwick
