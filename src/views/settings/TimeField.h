#pragma once

#include "views/controls/Fields.h"

namespace tarnwick {

/// A time of the day, written as "09:30". The arrow keys and Page keys move it. What is no time is not taken, and
/// stays until it is mended or Escape restores the valid time.
class TimeField final : public TextField {
  Q_OBJECT
 public:
  explicit TimeField(const QString& label, QWidget* parent = nullptr);

  /// Without a signal; what the user writes and what is no time are left alone.
  void setMinutes(int minutes);
  /// Whether what was entered is a time.
  bool isValid() const { return isValid_; }
  /// What was written is replaced by the valid time.
  void settle();

 Q_SIGNALS:
  /// Minutes after midnight, chosen by the user.
  void minutesChanged(int minutes);
  void validityChanged();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void written();
  void setValid(bool valid);
  void step(int minutes);

  int minutes_ = 0;
  bool isWriting_ = false;
  bool isValid_ = true;
};

}  // namespace tarnwick
