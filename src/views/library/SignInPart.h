#pragma once

#include <QObject>
#include <QUrl>
#include <functional>
#include <optional>
#include <stop_token>

#include "config/DockWidget.h"
#include "services/ServiceSession.h"

namespace tarnwick {

class Button;
class Card;
class Connections;
class FormRow;
class TextField;
class TextLabel;

/// The rows of a form by which the user signs in to a service in the browser, with a client of their own. It says how
/// that goes; a sign-in that came has the form stored, so that the tile shows it at once. What is under way ends with
/// this, and with it the port that the browser comes back to is free.
class SignInPart final : public QObject {
  Q_OBJECT
 public:
  /// What it asks of its form.
  struct Form {
    /// The widget as it would be stored; absent where something is wrong, which the form shows then.
    std::function<std::optional<DockWidget>()> check;
    /// Stores that, or fetches anew what is stored, because it is signed in now.
    std::function<void()> store;
    /// What is stored is signed out of now.
    std::function<void()> signedOut;
    std::function<void(const QUrl& page, std::function<void(bool opened)> done)> open;
    std::function<void(const QString& text)> copy;
  };
  /// `connections` outlives it. The rows stand at the end of `card`.
  SignInPart(Connections& connections, const OAuthProvider& provider, Form form, Card& card);
  ~SignInPart() override;

  /// Whether the rows are there. A sign-in that is under way ends with them.
  void setThere(bool there);
  /// What the widget is in the form now.
  void follow(const DockWidget& edited);
  /// Asks anew whether the user is signed in.
  void look();
  /// Whether anything was entered or done here.
  bool isTouched() const { return isTouched_; }
  /// Ends what is under way; nothing is called any more.
  void stop();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void signIn();
  void cancel();
  void signOut();
  void end(const QString& sentence, bool isFault);
  void setRunning(bool running);
  void setSignedIn(bool signedIn);
  void say(const QString& sentence, bool isFault);

  Connections& connections_;
  const Form form_;
  QList<FormRow*> rows_;
  FormRow* clientRow_;
  TextField* client_;
  TextField* secret_;
  Button* signIn_;
  Button* cancel_;
  Button* signOut_;
  TextLabel* sentence_;
  DockWidget edited_;
  QString keptClient_;  ///< Of the sign-in that is kept.
  bool isTouched_ = false;
  bool isRunning_ = false;
  bool isSignedIn_ = false;
  std::stop_source asking_;
  std::stop_source running_;
};

}  // namespace tarnwick
