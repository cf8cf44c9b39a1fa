#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

namespace tarnwick {

class Button;
class TextLabel;

/// Asks before something that cannot be taken back, where the pointer is: a sentence and two buttons. Not shown until
/// it asks.
class ConfirmBar final : public QWidget {
  Q_OBJECT
 public:
  explicit ConfirmBar(QWidget* parent = nullptr);

  /// Runs `act` when the button is pressed; nothing when the user thinks better of it.
  void ask(const QString& sentence, const QString& button, std::function<void()> act);
  bool isAsking() const { return isVisibleTo(parentWidget()); }
  void leave();

 Q_SIGNALS:
  /// The question is over, whatever the answer.
  void over();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  TextLabel* sentence_;
  Button* cancel_;
  Button* act_;
  std::function<void()> work_;
  QPointer<QWidget> before_;  // What had the keyboard before the question.
};

}  // namespace tarnwick
