#pragma once

#include <memory>

#include "base/Scheduler.h"
#include "services/Keychain.h"
#include "services/ServiceSession.h"
#include "services/oauth/OAuthTokens.h"
#include "services/ports/HTTPTransport.h"

namespace tarnwick {

/// The session of the running program: services over HTTP, credentials out of the keyring.
class WebSession final : public ServiceSession, public std::enable_shared_from_this<WebSession> {
 public:
  /// The scheduler must outlive it.
  WebSession(std::shared_ptr<HTTPTransport> transport, const Keychain& keychain, const OAuthTokens& tokens,
             const Scheduler& scheduler);

  QCoro::Task<QJsonValue> json(ServiceCall call, std::stop_token stop) override;
  QCoro::Task<QString> credential(DockWidget widget, std::stop_token stop) override;
  QCoro::Task<MaybeCredential> credentialIfAny(DockWidget widget, std::stop_token stop) override;
  QCoro::Task<QString> accessToken(DockWidget widget, OAuthProvider provider, std::stop_token stop) override;
  QDateTime now() const override { return scheduler_.now(); }

 private:
  std::shared_ptr<HTTPTransport> transport_;
  Keychain keychain_;
  OAuthTokens tokens_;
  const Scheduler& scheduler_;
};

/// Another session with a credential that is not kept yet.
class TypedCredential final : public ServiceSession {
 public:
  TypedCredential(std::shared_ptr<ServiceSession> session, const QString& credential)
      : session_(std::move(session)), credential_(credential) {}

  QCoro::Task<QJsonValue> json(ServiceCall call, std::stop_token stop) override {
    return session_->json(std::move(call), stop);
  }
  QCoro::Task<QString> credential(DockWidget widget, std::stop_token stop) override;
  QDateTime now() const override { return session_->now(); }

 private:
  std::shared_ptr<ServiceSession> session_;
  QString credential_;
};

}  // namespace tarnwick
