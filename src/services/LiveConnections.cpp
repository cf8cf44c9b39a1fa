#include "services/LiveConnections.h"

#include "services/CustomEndpoint.h"
#include "services/ProviderTable.h"
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

/// How the keyring's own window names a widget's service.
QString serviceName(const DockWidget& widget) {
  const Provider* provider = providerFor(widget.kind);
  return provider ? provider->name : Catalog::find(widget.kind).name;
}

}  // namespace

LiveConnections::LiveConnections(Setup setup)
    : session_(std::move(setup.session)),
      keychain_(setup.keychain),
      loader_(std::move(setup.loader)),
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

QCoro::Task<> LiveConnections::removeCredential(DockWidget widget) {
  values_.forget(widget.id);
  return keep(keychain_, {}, Keychain::account(widget), serviceName(widget), {});
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

QCoro::Task<QList<GeocodeCache::Place>> LiveConnections::places(QString name, std::stop_token stop) {
  return loader_.weather().search(std::move(name), kMostPlaces, stop);
}

}  // namespace tarnwick
