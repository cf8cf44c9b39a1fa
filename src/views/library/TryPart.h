#pragma once

#include <QJsonValue>
#include <QWidget>
#include <functional>
#include <optional>
#include <stop_token>

#include "config/DockWidget.h"
#include "services/ServiceAnswer.h"

namespace tarnwick {

class AnswerTree;
class Button;
class Connections;
class IconButton;
class TextLabel;

/// The row of a form that asks the service once, as the widget would, and says what came of it. Of an address of the
/// user's own the whole answer is shown too, to choose a field from; what is written into the form then counts at once,
/// without another question. Nothing is stored. What is under way ends with this.
class TryPart final : public QWidget {
  Q_OBJECT
 public:
  /// What it asks of its form.
  struct Form {
    /// The widget as it would be stored; absent where something is wrong, which the form shows then.
    std::function<std::optional<DockWidget>()> check;
    /// The credential that is typed; absent where the one that is kept counts.
    std::function<std::optional<QString>()> credential;
    /// A sentence about what is to be done in the form before there is anything to try; empty where nothing is.
    std::function<QString()> missing;
  };
  /// `connections` outlives it.
  TryPart(Connections& connections, Form form);
  ~TryPart() override;

  /// What the widget is in the form now. An answer of another address is forgotten.
  void follow(const DockWidget& edited);
  /// Drops the question and its answer.
  void forget();

 Q_SIGNALS:
  /// A field of the answer, as the option wants it.
  void chosen(const QString& path);

 private:
  void ask();
  void cancel();
  void setAsking(bool asking);
  void take(const ServiceAnswer<QJsonValue>& answer);
  void showValue();
  void say(const QString& sentence, bool isFault);

  Connections& connections_;
  const Form form_;
  Button* try_;
  IconButton* cancel_;
  TextLabel* sentence_;
  TextLabel* heading_;
  QWidget* well_;  ///< What the tree lies in.
  AnswerTree* tree_;
  DockWidget edited_;
  std::optional<DockWidget> asked_;  ///< As it stood in the form, with what was written there since.
  std::optional<QJsonValue> answer_;
  bool isAsking_ = false;
  std::stop_source stop_;
};

}  // namespace tarnwick
