#pragma once

#include "views/controls/Fields.h"

namespace tarnwick {

/// A time of the day, written as "09:30". The arrow keys and Page keys move it. What is no time is not taken.
class TimeField final : public TextField {
  Q_OBJECT
 public:
  explicit TimeField(const QString& label, QWidget* parent = nullptr);

  /// Without a signal; left alone while the user writes.
  void setMinutes(int minutes);

 Q_SIGNALS:
  /// Minutes after midnight, chosen by the user.
  void minutesChanged(int minutes);
  /// Whether what stands there is a time.
  void validityChanged(bool valid);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void written();
  void step(int minutes);
  void settle();

  int minutes_ = 0;
  bool isWriting_ = false;
};

}  // namespace tarnwick
