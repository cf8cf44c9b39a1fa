#pragma once

#include <QWidget>

namespace tarnwick {

class TextLabel;

/// The title of a window where the desktop puts none around it: the window is moved by it and closed at its end.
class TitleBar final : public QWidget {
  Q_OBJECT
 public:
  static constexpr int kHeight = 36;

  /// `window` is a window of its own.
  explicit TitleBar(QWidget& window);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  TextLabel* title_;
};

}  // namespace tarnwick
