#include "services/Connections.h"

#include "base/DomainError.h"
#include "services/ServiceWords.h"

namespace tarnwick {

namespace {

QString nothingReached() {
  return ServiceWords::tr("The service could not be reached. Check your connection and service address.");
}

}  // namespace

QCoro::Task<Capability> Connections::keepsCredentials() const { co_return Capability::no(ServiceWords::noKeyring()); }

QCoro::Task<bool> Connections::hasCredential(DockWidget, std::stop_token) const { co_return false; }

QCoro::Task<> Connections::saveCredential(DockWidget, QString, std::stop_token) { co_return; }

QCoro::Task<> Connections::removeCredential(DockWidget, std::stop_token) { co_return; }

QCoro::Task<> Connections::unlock(std::stop_token) { co_return; }

QCoro::Task<std::optional<Connections::SignedIn>> Connections::signedIn(DockWidget, std::stop_token) const {
  co_return std::nullopt;
}

QCoro::Task<QString> Connections::signIn(DockWidget, QString, std::optional<QString>, OAuthVisit, std::stop_token) {
  throw DomainError::invalid(nothingReached());
  co_return QString();
}

QCoro::Task<RemoteValue> Connections::attempt(DockWidget, std::optional<QString>, std::stop_token) {
  throw DomainError::invalid(nothingReached());
  co_return RemoteValue();
}

QCoro::Task<QJsonValue> Connections::answer(DockWidget, std::optional<QString>, std::stop_token) {
  throw DomainError::invalid(nothingReached());
  co_return QJsonValue();
}

QCoro::Task<QString> Connections::act(DockWidget, QString, std::stop_token) {
  throw DomainError::invalid(nothingReached());
  co_return QString();
}

QCoro::Task<QList<GeocodeCache::Place>> Connections::places(QString, std::stop_token) {
  co_return QList<GeocodeCache::Place>();
}

}  // namespace tarnwick
