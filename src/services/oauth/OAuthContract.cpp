#include "services/oauth/OAuthContract.h"

#include <sys/random.h>
#include <QCoroTask>
#include <QCryptographicHash>
#include <QUrlQuery>
#include <cerrno>
#include <cmath>

#include "base/DomainError.h"
#include "services/ServiceWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kRandomBytes = 32;
constexpr auto kSafeText = QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

/// All but letters, digits and "-._~" is encoded, as a form wants it.
QByteArray formText(const QString& text) { return QUrl::toPercentEncoding(text); }

}  // namespace

QString OAuthDeclined::sentence() { return ServiceWords::tr("Sign-in was declined or cancelled."); }

QString OAuthContract::random() {
  QByteArray bytes(kRandomBytes, Qt::Uninitialized);
  ssize_t got = 0;
  do {
    got = ::getrandom(bytes.data(), kRandomBytes, 0);
  } while (got < 0 && errno == EINTR);
  if (got != kRandomBytes) throw DomainError::invalid(ServiceWords::tr("Could not create a secure sign-in session."));
  return QString::fromLatin1(bytes.toBase64(kSafeText));
}

QString OAuthContract::challenge(const QString& verifier) {
  return QString::fromLatin1(
      QCryptographicHash::hash(verifier.toLatin1(), QCryptographicHash::Sha256).toBase64(kSafeText));
}

QMap<QString, QString> OAuthContract::authorizationFields(const OAuthProvider& provider, const QString& clientID,
                                                          const QString& redirect, const QString& state,
                                                          const QString& challenge) {
  QMap<QString, QString> fields = provider.extraFields;
  fields[provider.clientField] = clientID;
  fields[u"redirect_uri"_s] = redirect;
  fields[u"response_type"_s] = u"code"_s;
  fields[u"scope"_s] = provider.scope;
  fields[u"state"_s] = state;
  fields[u"code_challenge"_s] = challenge;
  fields[u"code_challenge_method"_s] = u"S256"_s;
  return fields;
}

QUrl OAuthContract::authorizationAddress(const OAuthProvider& provider, const QMap<QString, QString>& fields) {
  QUrl address = provider.authorization;
  address.setQuery(QString::fromLatin1(form(fields)), QUrl::StrictMode);
  return address;
}

QByteArray OAuthContract::form(const QMap<QString, QString>& fields) {
  QByteArrayList parts;
  for (const auto& [key, value] : fields.asKeyValueRange()) parts << formText(key) + '=' + formText(value);
  return parts.join('&');
}

QCoro::Task<QJsonValue> OAuthContract::post(std::shared_ptr<ServiceSession> session, OAuthProvider provider,
                                            QMap<QString, QString> fields, std::stop_token stop) {
  ServiceCall call;
  call.url = provider.token;
  call.form = form(fields);
  const QJsonValue answer = co_await session->json(std::move(call), stop);
  co_return answer;
}

OAuthRecord OAuthContract::record(const QJsonValue& value, const OAuthProvider& provider, const QString& clientID,
                                  const QString& clientSecret, const std::optional<OAuthRecord>& previous,
                                  const QDateTime& now) {
  OAuthRecord record{.provider = provider.id,
                     .clientID = clientID,
                     .clientSecret = clientSecret,
                     .accessToken = value[u"access_token"].toString(),
                     .refreshToken = value[u"refresh_token"].toString(),
                     .expires = {}};
  if (record.accessToken.isEmpty())
    throw DomainError::invalid(ServiceWords::tr("The provider did not return an access token."));
  if (!provider.neededScope.isEmpty() && !value[u"scope"].toString().split(u',').contains(provider.neededScope))
    throw DomainError::invalid(provider.scopeMissing);
  if (record.refreshToken.isEmpty() && previous) record.refreshToken = previous->refreshToken;
  if (record.refreshToken.isEmpty()) {
    throw DomainError::invalid(
        ServiceWords::tr("The provider did not return offline access. Reconnect and allow the requested read access."));
  }
  const double seconds = value[u"expires_in"].toDouble();
  // Longer than a century is no life of a token.
  if (!std::isfinite(seconds) || seconds <= 0 || seconds > 3.2e9)
    throw DomainError::invalid(ServiceWords::tr("Invalid token expiry."));
  record.expires = now.addSecs(static_cast<qint64>(seconds));
  return record;
}

QString OAuthContract::callback(const QString& target, const QString& state) {
  const DomainError invalid = DomainError::invalid(ServiceWords::tr("Invalid sign-in callback."));
  const QUrl address("http://127.0.0.1"_L1 + target, QUrl::StrictMode);
  if (!address.isValid() || address.host() != "127.0.0.1"_L1 || address.path() != "/callback"_L1 ||
      !address.hasQuery() || !target.startsWith(u'/'))
    throw invalid;
  const QUrlQuery query(address);
  const auto item = [&query](const QString& key) { return query.queryItemValue(key, QUrl::FullyDecoded); };
  if (item(u"state"_s) != state)
    throw DomainError::invalid(ServiceWords::tr("This sign-in callback belongs to a different session."));
  if (query.hasQueryItem(u"error"_s)) throw OAuthDeclined();
  const QString code = item(u"code"_s);
  if (code.isEmpty()) throw invalid;
  return code;
}

}  // namespace tarnwick
