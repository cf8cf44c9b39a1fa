#include "services/ServiceSession.h"

namespace tarnwick {

QCoro::Task<MaybeCredential> ServiceSession::credentialIfAny(DockWidget widget, std::stop_token stop) {
  MaybeCredential found;
  found.value = co_await credential(std::move(widget), stop);
  co_return found;
}

QCoro::Task<QString> ServiceSession::accessToken(DockWidget widget, OAuthProvider, std::stop_token stop) {
  return credential(std::move(widget), stop);
}

}  // namespace tarnwick
