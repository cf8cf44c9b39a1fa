#pragma once

#include <QCoroFwd>
#include <QUrl>
#include <functional>
#include <memory>
#include <stop_token>

#include "base/Scheduler.h"
#include "services/ServiceSession.h"
#include "services/oauth/OAuthRecord.h"
#include "services/ports/LoopbackServer.h"

namespace tarnwick {

/// The client that a user made for themselves at a service.
struct OAuthClient {
  QString id;
  QString secret;  ///< May be empty.
};

/// What happens outside of the program while the user signs in.
struct OAuthVisit {
  /// Opens a page in the user's browser, and says later whether it did.
  std::function<void(const QUrl& page, std::function<void(bool opened)> done)> open;
  /// The browser has come back; may be empty. Not called once the sign-in is stopped.
  std::function<void()> returned;
};

/// Signing in through the user's browser, from the first random bytes to the record. Main thread only.
class OAuthSignIn {
 public:
  /// The scheduler must outlive it. Without a server no port can be had.
  OAuthSignIn(std::shared_ptr<ServiceSession> session, MakeLoopbackServer server, Scheduler& scheduler)
      : session_(std::move(session)), server_(std::move(server)), scheduler_(scheduler) {}

  /// Keeps nothing. However it ends, the port is free then. May outlive this object. Throws DomainError,
  /// ServiceHTTPError and Cancelled.
  QCoro::Task<OAuthRecord> run(OAuthProvider provider, OAuthClient client, OAuthVisit visit,
                               std::stop_token stop) const;

 private:
  std::shared_ptr<ServiceSession> session_;
  MakeLoopbackServer server_;
  Scheduler& scheduler_;
};

}  // namespace tarnwick
