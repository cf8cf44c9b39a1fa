#pragma once

#include <QPixmap>
#include <QWidget>

namespace tarnwick {

/// A picture of a dock at the foot of a lake, painted by the dock's own painters with made-up values.
class DockScene final : public QWidget {
  Q_OBJECT
 public:
  explicit DockScene(QSize size, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void render();

  QPixmap dock_;
};

}  // namespace tarnwick
