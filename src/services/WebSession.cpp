#include "services/WebSession.h"

#include "services/RemoteAPI.h"
#include "services/oauth/OAuthRecord.h"

namespace tarnwick {

namespace {

// The session may be gone when these go on.
QCoro::Task<QString> kept(Keychain keychain, QString account, std::stop_token stop) {
  const std::optional<QString> credential = co_await keychain.read(account, stop);
  co_return credential.value_or(QString());
}

/// A sign-in is a secret between its service and the keyring: an address of the user's own never gets it.
QCoro::Task<MaybeCredential> sendable(Keychain keychain, QString account, std::stop_token stop) {
  MaybeCredential found = co_await keychain.readIfAny(account, stop);
  if (OAuthRecord::decode(found.value)) found.value.clear();
  co_return found;
}

}  // namespace

WebSession::WebSession(std::shared_ptr<HTTPTransport> transport, const Keychain& keychain, const OAuthTokens& tokens,
                       const Scheduler& scheduler)
    : transport_(std::move(transport)), keychain_(keychain), tokens_(tokens), scheduler_(scheduler) {}

QCoro::Task<QJsonValue> WebSession::json(ServiceCall call, std::stop_token stop) {
  return RemoteAPI::json(transport_, std::move(call), stop);
}

QCoro::Task<QString> WebSession::credential(DockWidget widget, std::stop_token stop) {
  return kept(keychain_, Keychain::account(widget), stop);
}

QCoro::Task<MaybeCredential> WebSession::credentialIfAny(DockWidget widget, std::stop_token stop) {
  return sendable(keychain_, Keychain::account(widget), stop);
}

QCoro::Task<QString> WebSession::accessToken(DockWidget widget, OAuthProvider provider, std::stop_token stop) {
  return tokens_.token(std::move(widget), std::move(provider), shared_from_this(), stop);
}

QCoro::Task<QString> TypedCredential::credential(DockWidget, std::stop_token) { co_return credential_; }

}  // namespace tarnwick
