#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <optional>

#include "base/OrderedWork.h"
#include "usage/ClaudeActivityConnect.h"

namespace tarnwick {

class Button;
class Card;
class FormRow;
class TextLabel;

/// The row of a form by which Claude Code's hooks are installed and taken out again, on another thread. Both count at
/// once, and are stored with the widget, also where the form closes meanwhile; what else stands in the form waits to be
/// saved.
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
  ~HooksPart() override;

  /// Whether the row is there.
  void setThere(bool there);
  /// What the widget is in the settings.
  void follow(const DockWidget& stored);

 private:
  void choose();
  void install(const QString& configuration);
  void remove();
  /// What came of it.
  struct Outcome {
    std::optional<DockWidget> widget;
    QString fault;
  };
  void run(const std::function<DockWidget()>& change, const QString& done);
  void take(const QString& done);
  void say(const QString& sentence, bool isFault);

  ClaudeActivityConnect connect_;
  Form form_;
  FormRow* row_;
  Button* install_;
  Button* remove_;
  TextLabel* sentence_;
  std::shared_ptr<Outcome> running_;
  OrderedWork disk_;
};

}  // namespace tarnwick
