#include "views/library/SignInPart.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "base/ForeignText.h"
#include "services/Connections.h"
#include "services/Keychain.h"
#include "services/ServiceAnswer.h"
#include "services/oauth/OAuthLoopback.h"
#include "views/controls/Buttons.h"
#include "views/controls/ControlTheme.h"
#include "views/controls/Fields.h"
#include "views/controls/Labels.h"
#include "views/window/Cards.h"
#include "widgets/LibraryWords.h"

namespace tarnwick {

namespace {

QCoro::Task<bool> signedOut(Connections& connections, DockWidget widget, std::stop_token stop) {
  co_await connections.removeCredential(widget, stop);
  co_return true;
}

QString secretHint(bool isKept) {
  return isKept ? QStringLiteral("••••••••") : LibraryWords::tr("Secret, if there is one");
}

QWidget* besideEachOther(std::initializer_list<QWidget*> controls) {
  auto* all = new QWidget;
  auto* row = new QHBoxLayout(all);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(theme::kRowOverhang);
  for (QWidget* control : controls) row->addWidget(control, qobject_cast<QLineEdit*>(control) ? 1 : 0);
  return all;
}

/// Buttons in a row, as wide as their words, the sentence below them.
QWidget* buttonsOver(std::initializer_list<QWidget*> buttons, QWidget* sentence) {
  auto* all = new QWidget;
  auto* row = new QHBoxLayout;
  row->setSpacing(theme::kRowOverhang);
  for (QWidget* button : buttons) row->addWidget(button);
  row->addStretch(1);
  auto* column = new QVBoxLayout(all);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(theme::kRowOverhang);
  column->addLayout(row);
  column->addWidget(sentence);
  return all;
}

}  // namespace

SignInPart::SignInPart(Connections& connections, const OAuthProvider& provider, Form form, Card& card)
    : connections_(connections),
      form_(std::move(form)),
      client_(new TextField(LibraryWords::tr("Client ID"))),
      secret_(new TextField(LibraryWords::tr("Client secret"))),
      signIn_(new Button(LibraryWords::tr("Sign In"))),
      cancel_(new Button(LibraryWords::tr("Cancel Sign-In"))),
      signOut_(new Button(LibraryWords::tr("Sign Out"))),
      sentence_(makeSentence({}, TextStyle::Caption, Tone::Secondary)) {
  client_->setPlaceholderText(LibraryWords::tr("Client ID"));
  secret_->setPlaceholderText(secretHint(false));
  secret_->setEchoMode(QLineEdit::Password);
  clientRow_ = FormRow::wide(LibraryWords::tr("Client ID and secret"), besideEachOther({client_, secret_}));
  rows_ << clientRow_;
  if (provider.port != 0) {
    const QString address = OAuthLoopback::redirect(provider.port);
    auto* shown = new TextField(LibraryWords::tr("Redirect address"));
    shown->setText(address);
    shown->setReadOnly(true);
    auto* copy = new Button(LibraryWords::tr("Copy"));
    copy->setAccessibleName(LibraryWords::tr("Copy the Redirect Address"));
    connect(copy, &QPushButton::clicked, this, [this, address] { form_.copy(address); });
    rows_ << FormRow::wide(LibraryWords::tr("Redirect address"), besideEachOther({shown, copy}),
                           LibraryWords::tr("Enter this address in your app first."));
  }
  signIn_->setAccessibleDescription(LibraryWords::tr("Opens %1 in your browser.").arg(provider.authorization.host()));
  rows_ << FormRow::wide({}, buttonsOver({signIn_, cancel_, signOut_}, sentence_));
  for (FormRow* row : rows_) card.add(row);
  connect(signIn_, &QPushButton::clicked, this, &SignInPart::signIn);
  connect(cancel_, &QPushButton::clicked, this, &SignInPart::cancel);
  connect(signOut_, &QPushButton::clicked, this, &SignInPart::signOut);
  for (TextField* field : {client_, secret_}) {
    field->installEventFilter(this);
    connect(field, &QLineEdit::textChanged, this, [this] {
      isTouched_ = true;
      clientRow_->setFault({});
      client_->setFaulty(false);
      if (!isRunning_) say({}, false);
    });
  }
  cancel_->hide();
  sentence_->hide();
  setSignedIn(false);
}

SignInPart::~SignInPart() { stop(); }

void SignInPart::stop() {
  asking_.request_stop();
  running_.request_stop();
}

/// Return in what is entered here means to sign in, not to save the form.
bool SignInPart::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) && !(key->modifiers() & ~Qt::KeypadModifier)) {
      signIn();
      return true;
    }
  }
  return QObject::eventFilter(watched, event);
}

void SignInPart::setThere(bool there) {
  if (!there && isRunning_) cancel();
  for (FormRow* row : std::as_const(rows_)) row->setVisible(there);
}

void SignInPart::follow(const DockWidget& edited) {
  const bool isAnother = Keychain::account(edited) != Keychain::account(edited_);
  edited_ = edited;
  if (isAnother) look();
}

void SignInPart::look() {
  if (edited_.id.isNull() || isRunning_) return;
  asking_.request_stop();
  asking_ = std::stop_source();
  tellAnswer<std::optional<Connections::SignedIn>>(
      connections_.signedIn(edited_, asking_.get_token()),
      [this](const ServiceAnswer<std::optional<Connections::SignedIn>>& answer) {
        const auto kept = answer.value.value_or(std::nullopt);
        keptClient_ = kept ? kept->clientID : QString();
        setSignedIn(kept.has_value());
        secret_->setPlaceholderText(secretHint(kept && kept->hasSecret));
        if (!kept || isTouched_) return;
        const QSignalBlocker quiet(client_);
        client_->setText(kept->clientID);
      },
      asking_.get_token());
}

void SignInPart::signIn() {
  if (isRunning_) return;
  const QString client = client_->text().trimmed();
  if (client.isEmpty()) {
    clientRow_->setFault(LibraryWords::tr("Enter the client ID of your app."));
    client_->setFaulty(true);
    client_->setFocus(Qt::OtherFocusReason);
    return;
  }
  isTouched_ = true;
  const auto widget = form_.check();
  if (!widget) return;
  const QString typed = secret_->text().trimmed();
  const auto secret = typed.isEmpty() && client == keptClient_ ? std::nullopt : std::optional(typed);
  asking_.request_stop();
  running_ = std::stop_source();
  const std::stop_token stop = running_.get_token();
  setRunning(true);
  say(LibraryWords::tr("Complete sign-in in your browser."), false);
  const OAuthVisit visit{.open = form_.open,
                         .returned = [this] { say(LibraryWords::tr("Finishing the sign-in…"), false); }};
  tellAnswer<QString>(
      connections_.signIn(*widget, client, secret, visit, stop),
      [this](const ServiceAnswer<QString>& answer) {
        if (!answer.value) {
          end(answer.sentence, true);
          return;
        }
        {
          const QSignalBlocker quiet(secret_);
          secret_->clear();
        }
        const bool isKept = answer.value->isEmpty();
        end(isKept ? LibraryWords::tr("Connected. Offline access is saved in Keychain.") : *answer.value, !isKept);
        form_.store();
        look();
      },
      stop);
}

void SignInPart::cancel() {
  running_.request_stop();
  end(LibraryWords::tr("Sign-in cancelled."), false);
  signIn_->setFocus(Qt::OtherFocusReason);
}

void SignInPart::signOut() {
  if (isRunning_) return;
  asking_.request_stop();
  running_ = std::stop_source();
  tellAnswer<bool>(
      signedOut(connections_, edited_, running_.get_token()),
      [this](const ServiceAnswer<bool>& answer) {
        const QString fault = answer.value ? QString() : answer.sentence;
        signIn_->setFocus(Qt::OtherFocusReason);
        end(fault.isEmpty() ? LibraryWords::tr("Signed out.") : fault, !fault.isEmpty());
        if (fault.isEmpty()) form_.signedOut();
        look();
      },
      running_.get_token());
}

void SignInPart::end(const QString& sentence, bool isFault) {
  const bool hadFocus = cancel_->hasFocus();
  setRunning(false);
  if (hadFocus) signIn_->setFocus(Qt::OtherFocusReason);
  say(sentence, isFault);
}

void SignInPart::setRunning(bool running) {
  isRunning_ = running;
  for (QWidget* each : {static_cast<QWidget*>(client_), static_cast<QWidget*>(secret_)}) each->setEnabled(!running);
  const bool hadFocus = signIn_->hasFocus();
  cancel_->setVisible(running);
  if (hadFocus && running) cancel_->setFocus(Qt::OtherFocusReason);
  signIn_->setVisible(!running);
  signOut_->setVisible(!running && isSignedIn_);
}

void SignInPart::setSignedIn(bool signedIn) {
  isSignedIn_ = signedIn;
  signIn_->setLabel(signedIn ? LibraryWords::tr("Sign In Again") : LibraryWords::tr("Sign In"));
  signOut_->setVisible(signedIn && !isRunning_);
}

void SignInPart::say(const QString& sentence, bool isFault) {
  sentence_->setTone(isFault ? Tone::Fault : Tone::Secondary);
  const QString line = ForeignText::line(sentence);
  if (line == sentence_->text()) return;
  sentence_->setText(line);
  sentence_->setVisible(!line.isEmpty());
  if (line.isEmpty() || !sentence_->isVisible()) return;
  QAccessibleEvent alert(sentence_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

}  // namespace tarnwick
