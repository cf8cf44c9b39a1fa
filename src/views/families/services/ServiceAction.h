#pragma once

#include <QWidget>
#include <functional>
#include <stop_token>

#include "services/Provider.h"
#include "services/ServiceAnswer.h"

namespace tarnwick {

class Button;
class Connections;
class TextField;
class WholeText;

/// What a panel asks of a service besides its values, by a press of the user alone: a lamp is switched, a link made. It
/// says what came of it. What is under way is not followed any more once this is gone.
class ServiceAction final : public QWidget {
 public:
  struct Panel {
    Connections& connections;            ///< Outlives it.
    std::function<DockWidget()> widget;  ///< As it is stored now.
    std::function<void()> done;          ///< What the service shows is another now.
    std::function<void(const QString& text)> copy;
  };
  /// That of a kind; null where it has none. It lives as long as the program.
  static const ProviderAction* of(const QString& kind);

  /// `action` outlives it.
  ServiceAction(const ProviderAction& action, Panel panel);
  ~ServiceAction() override;

  bool isOffered() const { return action_.isOffered(panel_.widget()); }

 private:
  void ask();
  void take(const ServiceAnswer<QString>& answer);
  void say(const QString& sentence);

  const ProviderAction& action_;
  const Panel panel_;
  TextField* text_;
  Button* button_;
  WholeText* sentence_;
  Button* copy_;
  QString result_;
  std::stop_source stop_;
};

}  // namespace tarnwick
