#pragma once

#include "views/library/FieldControl.h"

namespace tarnwick {

class Button;
class PerplexityUsage;
class TextLabel;

/// Signs in to and out of the user's own session in a browser, and says what to do next. It stands for no option.
class SessionField final : public FieldControl {
  Q_OBJECT
 public:
  /// `session` may be null: then there is nothing to sign in to. It outlives the field.
  explicit SessionField(PerplexityUsage* session);

  QString value() const override { return {}; }
  void setValue(const QString&) override {}
  void write(DockWidget&, const QString&) const override {}

 private:
  void showMessage();

  PerplexityUsage* session_;
  Button* signIn_;
  Button* signOut_;
  TextLabel* message_;
};

}  // namespace tarnwick
