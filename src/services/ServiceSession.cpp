#include "services/ServiceSession.h"

namespace tarnwick {

QCoro::Task<QString> ServiceSession::accessToken(DockWidget widget, OAuthProvider, std::stop_token stop) {
  return credential(std::move(widget), stop);
}

}  // namespace tarnwick
