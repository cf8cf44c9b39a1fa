#pragma once

#include <QString>

#include "views/controls/GlassPane.h"

namespace tarnwick {

class Button;

/// What a question says. All of it is plain text.
struct Question {
  QString title;
  QString sentence;
  QString facts;   ///< What the user decides by, line by line; it scrolls where it is long. May be empty.
  QString label;   ///< Of the facts, for screen readers.
  QString accept;  ///< The button that does something.
  QString refuse;  ///< The one that is harmless, and has the keyboard.
};

/// A question beside the dock that says what would happen before it does. Escape refuses.
class QuestionPane final : public GlassPane {
  Q_OBJECT
 public:
  explicit QuestionPane(const Question& question);

  QSize sizeHint() const override;

 Q_SIGNALS:
  void answered(bool accepted);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* makeFacts(const Question& question);

  Button* refuse_;
};

}  // namespace tarnwick
