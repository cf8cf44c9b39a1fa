#include "views/library/CredentialPart.h"

#include "services/Connections.h"
#include "services/Keychain.h"
#include "services/ServiceAnswer.h"
#include "views/library/CredentialField.h"
#include "views/window/Cards.h"
#include "widgets/LibraryWords.h"

namespace tarnwick {

namespace {

/// As an account names it; empty without an address.
QString hostOf(const DockWidget& widget) {
  const QString account = Keychain::account(widget);
  return account.mid(account.indexOf(u':') + 1);
}

QString notStored(const QString& host) { return LibraryWords::tr("No credential is kept for %1.").arg(host); }

/// Gives what failed, empty for nothing. `connections` is there until `stop` is requested.
QCoro::Task<QString> kept(Connections& connections, DockWidget widget, QString value, std::stop_token stop) {
  if (value.isEmpty()) {
    co_await connections.removeCredential(widget, stop);
    co_return QString();
  }
  const Capability can = co_await connections.keepsCredentials();
  if (!can || stop.stop_requested()) co_return can.reason;
  co_await connections.saveCredential(widget, value, stop);
  co_return QString();
}

/// Gives nothing that matters.
QCoro::Task<bool> unlocked(Connections& connections, std::stop_token stop) {
  co_await connections.unlock(stop);
  co_return true;
}

}  // namespace

CredentialPart::CredentialPart(Connections& connections, CredentialField& field, FormRow& row)
    : connections_(connections), field_(field), row_(row), help_(row.help()) {
  rest_.setSingleShot(true);
  rest_.setInterval(kRestMilliseconds);
  connect(&rest_, &QTimer::timeout, this, &CredentialPart::ask);
  connect(&field_, &FieldControl::changed, this, [this] {
    if (!field_.value().isEmpty()) typedHost_ = host_;
    showState();
  });
}

CredentialPart::~CredentialPart() { stop(); }

void CredentialPart::stop() {
  rest_.stop();
  asking_.request_stop();
  keeping_.request_stop();
}

void CredentialPart::follow(const DockWidget& stored, const DockWidget& edited) {
  const QString host = hostOf(edited);
  edited_ = edited;
  storedHost_ = hostOf(stored);
  if (host == host_) return;
  host_ = host;
  asking_.request_stop();
  isAsked_ = false;
  field_.setKept(false);
  failure_.clear();
  rest_.start();
  showState();
}

void CredentialPart::setExample(const QString& example) { field_.setExample(example); }

void CredentialPart::setUsual(const QString& help) {
  usual_ = help;
  showState();
}

void CredentialPart::look() {
  tellAnswer<Capability>(
      connections_.keepsCredentials(),
      [this](const ServiceAnswer<Capability>& answer) {
        lacking_ = answer.value && !*answer.value ? answer.value->reason : QString();
        showState();
      },
      keeping_.get_token());
  ask();
}

void CredentialPart::ask() {
  rest_.stop();
  asking_.request_stop();
  asking_ = std::stop_source();
  const std::stop_token stop = asking_.get_token();
  tellAnswer<bool>(
      connections_.hasCredential(edited_, stop),
      [this](const ServiceAnswer<bool>& answer) {
        isAsked_ = answer.value.has_value();
        failure_ = answer.sentence;
        field_.setKept(answer.value.value_or(false));
        showState();
      },
      stop);
}

bool CredentialPart::isForAnotherHost() const {
  return !field_.value().isEmpty() && !typedHost_.isEmpty() && !host_.isEmpty() && typedHost_ != host_;
}

QString CredentialPart::settle(const DockWidget& edited) {
  host_ = hostOf(edited);
  if (!isForAnotherHost()) {
    if (!field_.value().isEmpty() && !host_.isEmpty()) typedHost_ = host_;
    return {};
  }
  field_.forgetTyped();
  typedHost_.clear();
  showState();
  return notStored(host_);
}

std::optional<QString> CredentialPart::typed() const {
  if (field_.isRemoving()) return QString();
  if (field_.value().isEmpty() || isForAnotherHost()) return std::nullopt;
  return field_.value();
}

bool CredentialPart::isTouched() const { return field_.isTouched(); }

void CredentialPart::keep(const DockWidget& widget, std::function<void(const QString&)> done) {
  const std::stop_token stop = keeping_.get_token();
  tellAnswer<QString>(
      kept(connections_, widget, field_.value(), stop),
      [done = std::move(done)](const ServiceAnswer<QString>& answer) {
        done(answer.value ? *answer.value : answer.sentence);
      },
      stop);
}

void CredentialPart::unlock(std::function<void()> done) {
  const std::stop_token stop = keeping_.get_token();
  tellAnswer<bool>(
      unlocked(connections_, stop), [done = std::move(done)](const ServiceAnswer<bool>&) { done(); }, stop);
}

/// The one sentence below the label.
void CredentialPart::showState() {
  const bool isNew = !host_.isEmpty() && host_ != storedHost_;
  QString help = usual_.isEmpty() ? help_ : usual_;
  if (!lacking_.isEmpty())
    help = lacking_;
  else if (field_.isRemoving())
    help = LibraryWords::tr("The stored credential is removed when you save.");
  else if (isAsked_ && (isForAnotherHost() || (isNew && !field_.isKept() && field_.value().isEmpty())))
    help = notStored(host_);
  else if (field_.isKept())
    help = LibraryWords::tr("A credential is stored in the keyring. Entering a new one replaces it.");
  else if (!failure_.isEmpty() && field_.value().isEmpty())
    help = failure_;
  row_.setHelp(help);
}

}  // namespace tarnwick
