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
  /// A renewed sign-in that the keyring does not take fails the call that brought it. It is used as long as the program
  /// runs, and offered to the keyring again with each call. One that is replaced or removed meanwhile (Keychain::stamp)
  /// never comes back. Throws DomainError, ServiceHTTPError and Cancelled.
  QCoro::Task<QString> token(DockWidget widget, OAuthProvider provider, std::shared_ptr<ServiceSession> session,
                             std::stop_token stop) const;

  /// Takes over what the user just signed in to, by a press of theirs: they may be asked to unlock the keyring. What
  /// that does not take throws DomainError with its sentence and is used all the same, as above. Cancelled, nothing is.
  QCoro::Task<> keep(DockWidget widget, OAuthRecord record, QString serviceName, std::stop_token stop) const;
  /// The sign-in that counts for a widget; absent where there is none. Asks nobody. Throws DomainError and Cancelled.
  QCoro::Task<std::optional<OAuthRecord>> record(DockWidget widget, std::stop_token stop) const;

 private:
  std::shared_ptr<OAuthTokenState> state_;
};

}  // namespace tarnwick
