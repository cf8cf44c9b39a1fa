#include "services/oauth/OAuthSignIn.h"

#include <QCoroTask>

#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "services/ServiceWords.h"
#include "services/oauth/OAuthContract.h"
#include "services/oauth/OAuthLoopback.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

/// What one attempt is made of; whoever began it may be gone.
struct Attempt {
  std::shared_ptr<ServiceSession> session;
  std::shared_ptr<OAuthLoopback> loopback;
  OAuthProvider provider;
  OAuthClient client;
  OAuthVisit visit;
};

/// Sends the browser to the service. One that cannot be opened ends the attempt.
void openPage(const Attempt& attempt, const QUrl& page) {
  attempt.visit.open(page, [loopback = std::weak_ptr(attempt.loopback)](bool opened) {
    if (opened) return;
    if (const auto waiting = loopback.lock())
      waiting->stop(
          std::make_exception_ptr(DomainError::invalid(ServiceWords::tr("The browser could not be opened."))));
  });
}

QCoro::Task<QString> codeOf(Attempt attempt, std::stop_token stop) {
  try {
    const QString code = co_await attempt.loopback->code(stop);
    co_return code;
  } catch (const OAuthDeclined&) {
    throw DomainError::invalid(OAuthDeclined::sentence());
  }
}

QCoro::Task<OAuthRecord> recordOf(Attempt attempt, std::stop_token stop) {
  throwIfStopped(stop);
  const OAuthProvider& provider = attempt.provider;
  const QString state = OAuthContract::random();
  const QString verifier = OAuthContract::random();
  const QString redirect = attempt.loopback->start(provider.port, state);
  openPage(attempt, OAuthContract::authorizationAddress(
                        provider, OAuthContract::authorizationFields(provider, attempt.client.id, redirect, state,
                                                                     OAuthContract::challenge(verifier))));
  const QString code = co_await codeOf(attempt, stop);
  if (attempt.visit.returned) attempt.visit.returned();
  QMap<QString, QString> fields{{u"grant_type"_s, u"authorization_code"_s},
                                {u"code"_s, code},
                                {u"redirect_uri"_s, redirect},
                                {u"code_verifier"_s, verifier},
                                {provider.clientField, attempt.client.id}};
  if (!attempt.client.secret.isEmpty()) fields.insert(u"client_secret"_s, attempt.client.secret);
  const QJsonValue answer = co_await OAuthContract::post(attempt.session, provider, fields, stop);
  co_return OAuthContract::record(answer, provider, attempt.client.id, attempt.client.secret, std::nullopt,
                                  attempt.session->now());
}

}  // namespace

QCoro::Task<OAuthRecord> OAuthSignIn::run(OAuthProvider provider, OAuthClient client, OAuthVisit visit,
                                          std::stop_token stop) const {
  return recordOf({session_, std::make_shared<OAuthLoopback>(server_, scheduler_), std::move(provider),
                   std::move(client), std::move(visit)},
                  std::move(stop));
}

}  // namespace tarnwick
