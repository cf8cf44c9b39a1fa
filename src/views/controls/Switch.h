#pragma once

#include <QCheckBox>

#include "motion/Fade.h"
#include "views/controls/ControlLook.h"

namespace tarnwick {

/// On or off, at once. `label` is read by screen readers; what it switches is written beside it.
class Switch final : public QCheckBox {
  Q_OBJECT
 public:
  explicit Switch(const QString& label, QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool hitButton(const QPoint& position) const override { return rect().contains(position); }
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void checkStateSet() override;
  void nextCheckState() override;

 private:
  void travel();

  Animator animator_;
  Fade knob_;  ///< 1 where it is on.
  bool byKeyboard_ = false;
};

}  // namespace tarnwick
