#pragma once

#include <QIcon>
#include <QWidget>

namespace tarnwick {

/// The program's own picture: a lake with hills, and a dock before it.
class AppMark final : public QWidget {
  Q_OBJECT
 public:
  explicit AppMark(int size, QWidget* parent = nullptr);

  /// The same for window lists and task bars.
  static QIcon icon();

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tarnwick
