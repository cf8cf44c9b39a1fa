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
  /// The value as it is written.
  QString text() const;
  int least() const { return least_; }
  int most() const { return most_; }
  int step() const { return step_; }
  /// Without a signal; kept within the range.
  void setValue(int value);
  /// What the user does with as many steps as lead nearest to that value.
  void stepTo(int wanted);
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
  void change(int value);
  void showValue();

  IconButton* less_;
  IconButton* more_;
  std::function<QString(int)> format_;
  int value_ = 0;
  int least_ = 0;
  int most_ = 100;
  int step_ = 1;
};

}  // namespace tarnwick
