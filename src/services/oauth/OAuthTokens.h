#pragma once

#include <QCoroFwd>
#include <memory>

#include "services/Keychain.h"
#include "services/ServiceSession.h"
#include "services/oauth/OAuthRecord.h"

namespace tarnwick {

struct OAuthTokenState;

/// Access tokens out of the sign-ins in the keyring. One that is about to expire is refreshed, once for all who ask for
/// it meanwhile. Copies are the same; what is under way may outlive them. Main thread only.
class OAuthTokens {
 public:
  explicit OAuthTokens(const Keychain& keychain);

  /// Empty where nothing is kept; what is kept as it stands where it is no sign-in. `session` carries the refresh.
  /// A new sign-in that the keyring does not take fails the call that brought it. It is used as long as the program
  /// runs, and offered to the keyring again with each call. Throws DomainError, ServiceHTTPError and Cancelled.
  QCoro::Task<QString> token(DockWidget widget, OAuthProvider provider, std::shared_ptr<ServiceSession> session,
                             std::stop_token stop) const;

 private:
  std::shared_ptr<OAuthTokenState> state_;
};

}  // namespace tarnwick
