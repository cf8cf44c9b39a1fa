#pragma once

#include <QWidget>
#include <functional>

namespace tarnwick {

class IconButton;

/// A whole number between two buttons that make it smaller and larger.
class Stepper final : public QWidget {
  Q_OBJECT
 public:
  explicit Stepper(const QString& label, QWidget* parent = nullptr);

  int value() const { return value_; }
  /// Without a signal; kept within the range.
  void setValue(int value);
  void setRange(int least, int most);
  void setStep(int step) { step_ = step; }
  void setFormat(std::function<QString(int value)> format);
  QSize sizeHint() const override;

 Q_SIGNALS:
  /// The user changed it.
  void valueChanged(int value);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void stepBy(int steps);
  void showValue();

  QString label_;
  IconButton* less_;
  IconButton* more_;
  std::function<QString(int)> format_;
  int value_ = 0;
  int least_ = 0;
  int most_ = 100;
  int step_ = 1;
};

}  // namespace tarnwick
