#include "services/HTTPContract.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTimeZone>
#include <algorithm>

#include "base/DomainError.h"
#include "base/Text.h"
#include "services/ServiceHTTPError.h"
#include "services/ServiceWords.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kLongestPause = 86'400;

/// All of these are single units of UTF-16.
bool breaksLine(QChar unit) {
  const char16_t code = unit.unicode();
  return (code >= 0x0A && code <= 0x0D) || code == 0x85 || code == 0x2028 || code == 0x2029;
}

bool isSafe(const QUrl& url) {
  // An empty user is one too, of which only the sign behind it is left.
  return url.isValid() && url.scheme() == "https"_L1 && !url.host().isEmpty() && !url.authority().contains(u'@');
}

QMap<QString, QString> headersOf(const ServiceCall& call) {
  QMap<QString, QString> headers = call.headers;
  if (call.token.isEmpty()) return headers;
  constexpr auto kName = "Authorization"_L1;
  headers.removeIf([&](const auto& entry) { return entry.key().compare(kName, Qt::CaseInsensitive) == 0; });
  headers[kName] = call.bearer ? "Bearer "_L1 + call.token : call.token;
  return headers;
}

/// A date as HTTP writes it. What it says of the day of the week is not compared.
std::optional<QDateTime> httpDate(const QString& text) {
  static const QRegularExpression kForm(
      uR"(\A(?:Mon|Tue|Wed|Thu|Fri|Sat|Sun), (\d{1,2}) ([A-Z][a-z]{2}) (\d{4}) (\d{2}):(\d{2}):(\d{2}) (?:GMT|UTC)\z)"_s);
  static const QStringList kMonths = u"Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec"_s.split(u' ');
  const QRegularExpressionMatch match = kForm.match(text);
  if (!match.hasMatch()) return std::nullopt;
  const auto number = [&](int group) { return match.capturedView(group).toInt(); };
  const QDate date(number(3), static_cast<int>(kMonths.indexOf(match.captured(2))) + 1, number(1));
  const QTime time(number(4), number(5), number(6));
  if (!date.isValid() || !time.isValid()) return std::nullopt;
  return QDateTime(date, time, QTimeZone::utc());
}

}  // namespace

HTTPRequest HTTPContract::request(const ServiceCall& call) {
  if (!isSafe(call.url))
    throw DomainError::invalid(ServiceWords::tr("Use an HTTPS URL without credentials in the address."));
  HTTPRequest request;
  request.url = call.url;
  request.headers.set("Accept", "application/json");
  request.headers.set("User-Agent", "Tarnwick/0.2");
  const QMap<QString, QString> headers = headersOf(call);
  for (auto [name, value] : headers.asKeyValueRange()) {
    if (std::ranges::any_of(name, breaksLine) || std::ranges::any_of(value, breaksLine))
      throw DomainError::invalid(ServiceWords::tr("A service credential contains a line break."));
  }
  for (auto [name, value] : headers.asKeyValueRange()) request.headers.set(name.toUtf8(), value.toUtf8());
  if (call.body) {
    request.body = QJsonDocument(*call.body).toJson(QJsonDocument::Compact);
    request.headers.set("Content-Type", "application/json");
  } else if (call.form) {
    request.body = call.form;
    request.headers.set("Content-Type", "application/x-www-form-urlencoded");
  }
  return request;
}

QJsonValue HTTPContract::response(const HTTPResponse& response) {
  judge(response);
  const std::optional<QJsonValue> value = decode(response.body);
  if (!value) throw DomainError::invalid(invalidJSON());
  return *value;
}

void HTTPContract::judge(const HTTPResponse& response) {
  if (response.status <= 0) throw DomainError::invalid(ServiceWords::tr("The service returned an invalid response."));
  if (response.status < 200 || response.status > 299) {
    const std::optional<QByteArray> after = response.headers.value("Retry-After");
    throw ServiceHTTPError(
        response.status, retryDate(after ? std::optional(QString::fromUtf8(*after)) : std::nullopt, response.received));
  }
  if (response.body.size() > HTTPLimits::largestBody) throw DomainError::invalid(sentence(HTTPFailure::TooLarge));
}

std::optional<QJsonValue> HTTPContract::decode(const QByteArray& body) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(body, &error);
  if (error.error != QJsonParseError::NoError) return std::nullopt;
  if (document.isObject()) return document.object();
  if (document.isArray()) return document.array();
  return std::nullopt;
}

QString HTTPContract::invalidJSON() { return ServiceWords::tr("The service returned an invalid JSON response."); }

QString HTTPContract::sentence(HTTPFailure failure) {
  switch (failure) {
    case HTTPFailure::TimedOut:
      return ServiceWords::tr("The service did not respond within 20 seconds.");
    case HTTPFailure::TooLarge:
      return ServiceWords::tr("Response is too large.");
    case HTTPFailure::Unreachable:
      break;
  }
  return ServiceWords::tr("The service could not be reached. Check your connection and service address.");
}

std::optional<QDateTime> HTTPContract::retryDate(const std::optional<QString>& value, const QDateTime& now) {
  if (!value) return std::nullopt;
  const std::optional<double> seconds = Text::number(*value);
  if (seconds && *seconds >= 0)
    return now.addMSecs(qRound64(std::min(*seconds, static_cast<double>(kLongestPause)) * 1000));
  const std::optional<QDateTime> date = httpDate(*value);
  if (!date) return std::nullopt;
  return std::clamp(*date, now, now.addSecs(kLongestPause));
}

}  // namespace tarnwick
