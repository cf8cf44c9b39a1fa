#include "services/LiveConnections.h"

#include <QPointer>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "services/CustomEndpoint.h"
#include "services/ProviderTable.h"
#include "services/ServiceWords.h"
#include "services/WebSession.h"
#include "widgets/catalog/Catalog.h"

namespace tarnwick {

namespace {

// Whoever asked these may be gone when they go on.

QCoro::Task<bool> isKept(Keychain keychain, QString account, std::stop_token stop) {
  const std::optional<QString> credential = co_await keychain.read(account, stop);
  co_return credential && !credential->isEmpty();
}

QCoro::Task<> keep(Keychain keychain, QString value, QString account, QString name, std::stop_token stop) {
  co_await keychain.save(value, account, name, SecretStore::Asking::Allowed, stop);
}

QCoro::Task<std::optional<Connections::SignedIn>> signInOf(OAuthTokens tokens, DockWidget widget,
                                                           std::stop_token stop) {
  const std::optional<OAuthRecord> record = co_await tokens.record(std::move(widget), stop);
  if (!record) co_return std::nullopt;
  const Connections::SignedIn signedIn{record->clientID, !record->clientSecret.isEmpty()};
  co_return signedIn;
}

/// The secret that is kept with the sign-in of a client; empty for none.
QCoro::Task<QString> secretOf(OAuthTokens tokens, DockWidget widget, QString clientID, std::stop_token stop) {
  try {
    const std::optional<OAuthRecord> record = co_await tokens.record(std::move(widget), stop);
    co_return record && record->clientID == clientID ? record->clientSecret : QString();
  } catch (const DomainError&) {
    co_return QString();  // A keyring that is locked: many clients have none.
  }
}

QCoro::Task<QString> signedInto(OAuthSignIn signIn, OAuthTokens tokens, Provider provider, DockWidget widget,
                                OAuthClient client, OAuthVisit visit, std::stop_token stop) {
  const OAuthRecord record = co_await signIn.run(*provider.signIn, client, visit, stop);
  try {
    co_await tokens.keep(widget, record, provider.name, stop);
  } catch (const DomainError& failure) {
    co_return failure.message();
  }
  co_return QString();
}

QCoro::Task<QString> signInWith(OAuthSignIn signIn, OAuthTokens tokens, Provider provider, DockWidget widget,
                                QString clientID, std::optional<QString> secret, OAuthVisit visit,
                                std::stop_token stop) {
  // What is kept belongs to the service's own host, whatever the options say.
  widget = provider.configured(std::move(widget));
  if (!secret) secret = co_await secretOf(tokens, widget, clientID, stop);
  // With a name: what is awaited must hold nothing that was made in its place.
  const OAuthClient client{clientID, *secret};
  const QString fault = co_await signedInto(signIn, tokens, provider, widget, client, visit, stop);
  co_return fault;
}

/// What the service gave is forgotten only once the credential is gone, and then even if nobody asks any more.
QCoro::Task<> removeKept(Keychain keychain, QString account, QPointer<RemoteValues> values, QUuid widget,
                         std::stop_token stop) {
  co_await keychain.unlock(stop);
  throwIfStopped(stop);
  const QString nothing;
  co_await keychain.save(nothing, account, nothing, SecretStore::Asking::Never);
  const std::optional<QString> left = co_await keychain.read(account);
  if (left && !left->isEmpty())
    throw DomainError::invalid(ServiceWords::tr("The credential could not be removed from the keyring."));
  if (values) values->forget(widget);
}

/// How the keyring's own window names a widget's service.
QString serviceName(const DockWidget& widget) {
  const Provider* provider = providerFor(widget.kind);
  return provider ? provider->name : Catalog::find(widget.kind).name;
}

}  // namespace

LiveConnections::LiveConnections(Setup setup)
    : session_(std::move(setup.session)),
      keychain_(setup.keychain),
      tokens_(setup.tokens),
      signIn_(session_, std::move(setup.loopback), setup.scheduler),
      loader_(std::move(setup.loader)),
      perplexity_(std::move(setup.perplexity)),
      values_({.scheduler = setup.scheduler,
               .session = setup.events,
               .network = setup.network,
               .loader = [loader = loader_, session = session_](
                             const DockWidget& widget, bool fahrenheit,
                             std::stop_token stop) { return loader.load(widget, session, fahrenheit, stop); },
               .cacheFile = std::move(setup.cacheFile)}) {
  connect(&values_, &RemoteValues::changed, this, &Connections::changed);
}

QCoro::Task<bool> LiveConnections::hasCredential(DockWidget widget, std::stop_token stop) const {
  return isKept(keychain_, Keychain::account(widget), stop);
}

QCoro::Task<> LiveConnections::saveCredential(DockWidget widget, QString value, std::stop_token stop) {
  return keep(keychain_, std::move(value), Keychain::account(widget), serviceName(widget), stop);
}

QCoro::Task<> LiveConnections::removeCredential(DockWidget widget, std::stop_token stop) {
  return removeKept(keychain_, Keychain::account(widget), &values_, widget.id, stop);
}

QCoro::Task<std::optional<Connections::SignedIn>> LiveConnections::signedIn(DockWidget widget,
                                                                            std::stop_token stop) const {
  return signInOf(tokens_, std::move(widget), std::move(stop));
}

QCoro::Task<QString> LiveConnections::signIn(DockWidget widget, QString clientID, std::optional<QString> secret,
                                             OAuthVisit visit, std::stop_token stop) {
  const Provider* provider = providerFor(widget.kind);
  if (!provider || !provider->signIn)
    return Connections::signIn(std::move(widget), std::move(clientID), std::move(secret), std::move(visit), stop);
  return signInWith(signIn_, tokens_, *provider, std::move(widget), std::move(clientID), std::move(secret),
                    std::move(visit), std::move(stop));
}

std::shared_ptr<ServiceSession> LiveConnections::sessionWith(const std::optional<QString>& credential) const {
  return credential ? std::make_shared<TypedCredential>(session_, *credential) : session_;
}

QCoro::Task<RemoteValue> LiveConnections::attempt(DockWidget widget, std::optional<QString> credential,
                                                  std::stop_token stop) {
  return loader_.load(std::move(widget), sessionWith(credential), values_.usesFahrenheit(), stop);
}

QCoro::Task<QJsonValue> LiveConnections::answer(DockWidget widget, std::optional<QString> credential,
                                                std::stop_token stop) {
  return CustomEndpoint::answer(std::move(widget), sessionWith(credential), stop);
}

QCoro::Task<QString> LiveConnections::act(DockWidget widget, QString text, std::stop_token stop) {
  const Provider* provider = providerFor(widget.kind);
  if (!provider) return Connections::act(std::move(widget), std::move(text), std::move(stop));
  return actAt(*provider, std::move(widget), std::move(text), session_, std::move(stop));
}

QCoro::Task<QList<GeocodeCache::Place>> LiveConnections::places(QString name, std::stop_token stop) {
  return loader_.weather().search(std::move(name), kMostPlaces, stop);
}

}  // namespace tarnwick
