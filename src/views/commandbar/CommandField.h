#pragma once

#include <QLineEdit>
#include <QTimer>
#include <memory>

#include "motion/Animator.h"

class QProxyStyle;

namespace tarnwick {

/// The line of the command bar that the user writes in, with a glass before it and a ring behind it that turns while
/// something is still searched. Its caret is drawn here, as the toolkit's has the colour of the text.
class CommandField final : public QLineEdit {
  Q_OBJECT
 public:
  explicit CommandField(QWidget* parent = nullptr);
  ~CommandField() override;

  /// What the ring turns by.
  void setClock(std::unique_ptr<FrameClock> clock);
  /// With reduced motion the ring stands.
  void setReduceMotion(bool reduce) { reduceMotion_ = reduce; }
  void setSearching(bool searching);
  /// What it says while it is empty.
  void setFindsNothing(bool findsNothing);

 Q_SIGNALS:
  /// A key that means something for the list. Its modifiers are without that of the keypad.
  void listKeyPressed(QKeyEvent* event);

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  class Ring;

  void takeLook();
  void setSpaceAround();
  void showCaret();
  void blink();
  QRect ringPlace() const;

  std::unique_ptr<QProxyStyle> style_;
  Animator animator_;
  std::unique_ptr<Ring> ring_;
  QTimer blinking_;
  bool caretShows_ = true;
  bool searching_ = false;
  bool reduceMotion_ = false;
};

}  // namespace tarnwick
