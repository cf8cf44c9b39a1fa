#pragma once

#include <QAbstractSlider>
#include <functional>

#include "views/controls/ControlLook.h"

namespace tarnwick {

/// A value on a line, written beside it. Arrows, Page and Home keys and the wheel move it.
class Slider final : public QAbstractSlider {
  Q_OBJECT
 public:
  explicit Slider(const QString& label, QWidget* parent = nullptr);

  /// How the value is written; "64%" unless set otherwise. A function that gives no text hides it.
  void setFormat(std::function<QString(int value)> format);
  /// The space that the written value takes at the end.
  void setValueWidth(int width);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  double lineWidth() const;
  void moveTo(double x);

  std::function<QString(int)> format_;
  int valueWidth_;
  bool byKeyboard_ = false;
};

}  // namespace tarnwick
