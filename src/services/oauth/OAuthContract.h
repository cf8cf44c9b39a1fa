#pragma once

#include <QCoroFwd>
#include <QJsonValue>
#include <QMap>
#include <exception>
#include <memory>
#include <optional>
#include <stop_token>

#include "services/ServiceSession.h"
#include "services/oauth/OAuthRecord.h"

namespace tarnwick {

/// The user said no in the browser.
class OAuthDeclined : public std::exception {
 public:
  static QString sentence();
  const char* what() const noexcept override { return "declined"; }
};

/// The authorisation code flow with a proof key, for the client of a user: what is sent, and what of an answer counts.
/// What throws, throws DomainError with a sentence. Nothing of it is ever logged.
struct OAuthContract {
  /// 32 bytes that nobody can guess, as text that fits into an address.
  static QString random();
  /// What is told of a verifier before it is shown itself.
  static QString challenge(const QString& verifier);
  static QMap<QString, QString> authorizationFields(const OAuthProvider& provider, const QString& clientID,
                                                    const QString& redirect, const QString& state,
                                                    const QString& challenge);
  static QUrl authorizationAddress(const OAuthProvider& provider, const QMap<QString, QString>& fields);
  /// Fields as application/x-www-form-urlencoded, by key.
  static QByteArray form(const QMap<QString, QString>& fields);

  /// The answer of the token endpoint.
  static QCoro::Task<QJsonValue> post(std::shared_ptr<ServiceSession> session, OAuthProvider provider,
                                      QMap<QString, QString> fields, std::stop_token stop);
  /// The sign-in that an answer comes to. `previous` has the refresh token where the answer gives none.
  static OAuthRecord record(const QJsonValue& value, const OAuthProvider& provider, const QString& clientID,
                            const QString& clientSecret, const std::optional<OAuthRecord>& previous,
                            const QDateTime& now);
  /// The code in the target of the request by which the browser came back, "/callback?…". Throws OAuthDeclined too.
  static QString callback(const QString& target, const QString& state);
};

}  // namespace tarnwick
