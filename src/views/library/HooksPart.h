#pragma once

#include <QObject>
#include <functional>

#include "usage/ClaudeActivityConnect.h"

namespace tarnwick {

class Button;
class Card;
class FormRow;
class TextLabel;

/// The row of a form by which Claude Code's hooks are installed and taken out again. Both count at once, and are stored
/// with the widget; what else stands in the form waits to be saved.
class HooksPart final : public QObject {
  Q_OBJECT
 public:
  /// What it asks of its form.
  struct Form {
    std::function<DockWidget()> stored;  ///< The widget in the settings.
    std::function<void(const DockWidget& widget)> store;
  };
  /// The row stands at the end of `card`.
  HooksPart(ClaudeActivityConnect connect, Form form, Card& card);

  /// Whether the row is there.
  void setThere(bool there);
  /// What the widget is in the settings.
  void follow(const DockWidget& stored);

 private:
  void choose();
  void install(const QString& configuration);
  void remove();
  void run(const std::function<DockWidget()>& change, const QString& done);
  void say(const QString& sentence, bool isFault);

  ClaudeActivityConnect connect_;
  Form form_;
  FormRow* row_;
  Button* install_;
  Button* remove_;
  TextLabel* sentence_;
};

}  // namespace tarnwick
