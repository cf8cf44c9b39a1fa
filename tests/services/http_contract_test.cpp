#include <gtest/gtest.h>

#include <QTimeZone>

#include "base/DomainError.h"
#include "services/BaseAddresses.h"
#include "services/HTTPContract.h"
#include "services/ServiceHTTPError.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

const QDateTime kNow(QDate(2026, 11, 24), QTime(10, 24), QTimeZone::utc());

/// The sentence that is thrown; empty where nothing is.
template <class Work>
QString sentenceOf(Work work) {
  try {
    work();
  } catch (const DomainError& error) {
    return error.message();
  } catch (const ServiceHTTPError& error) {
    return error.errorDescription();
  }
  return {};
}

ServiceCall callOf(const QString& address, const QString& token = {}, const QMap<QString, QString>& headers = {}) {
  ServiceCall call;
  call.url = QUrl(address);
  call.token = token;
  call.headers = headers;
  return call;
}

TEST(HTTPContract, TakesOnlySafeAddresses) {
  const QString refusal = u"Use an HTTPS URL without credentials in the address."_s;
  const struct {
    QString address;
    bool isTaken;
  } cases[] = {
      {u"https://a.example/x?y=1"_s, true},
      {u"HTTPS://A.example"_s, true},
      {u"https://a.example:8443/"_s, true},
      {u"https://a.example/@b"_s, true},
      {u"http://a.example"_s, false},
      {u"https://"_s, false},
      {u"https:///path"_s, false},
      {u"https://me@a.example"_s, false},
      {u"https://me:pw@a.example"_s, false},
      {u"https://:pw@a.example"_s, false},
      {u"https://@a.example"_s, false},
      {u"a.example"_s, false},
      {u""_s, false},
      {u"ftp://a.example"_s, false},
      {u"https://a b.example"_s, false},
  };
  for (const auto& [address, isTaken] : cases) {
    // A line break in the token is not reached where the address is refused.
    const QString token = isTaken ? u"key"_s : u"k\ney"_s;
    EXPECT_EQ(sentenceOf([&] { HTTPContract::request(callOf(address, token)); }), isTaken ? QString() : refusal)
        << qPrintable(address);
  }
}

TEST(HTTPContract, RefusesLineBreaksInHeaders) {
  for (const int code : {0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0x20, 0x85, 0x2027, 0x2028, 0x2029, 0x202A}) {
    const bool isBreak = (code >= 0x0A && code <= 0x0D) || code == 0x85 || code == 0x2028 || code == 0x2029;
    const QString text = u"a"_s + QChar(code) + u'b';
    const QString expected = isBreak ? u"A service credential contains a line break."_s : QString();
    const ServiceCall calls[] = {callOf(u"https://a.example"_s, text), callOf(u"https://a.example"_s, {}, {{text, {}}}),
                                 callOf(u"https://a.example"_s, {}, {{u"X"_s, text}})};
    for (const ServiceCall& call : calls) EXPECT_EQ(sentenceOf([&] { HTTPContract::request(call); }), expected) << code;
  }
}

TEST(HTTPContract, SetsHeadersInTheirOrder) {
  using Headers = QMap<QString, QString>;
  const struct {
    const char* name;
    QString token;
    bool bearer;
    bool hasBody;
    Headers headers;
    Headers expected;
  } cases[] = {
      {"nothing", {}, true, false, {}, {{u"Accept"_s, u"application/json"_s}, {u"User-Agent"_s, u"Tarnwick/0.2"_s}}},
      {"a token", u"k"_s, true, false, {}, {{u"Authorization"_s, u"Bearer k"_s}}},
      {"a bare token", u"k"_s, false, false, {}, {{u"Authorization"_s, u"k"_s}}},
      {"a token in place of the caller's",
       u"k"_s,
       true,
       false,
       {{u"authorization"_s, u"x"_s}},
       {{u"Authorization"_s, u"Bearer k"_s}}},
      {"the caller's own", {}, true, false, {{u"Authorization"_s, u"Basic x"_s}}, {{u"Authorization"_s, u"Basic x"_s}}},
      {"a caller's in place of ours",
       {},
       true,
       false,
       {{u"accept"_s, u"a/b"_s}, {u"USER-AGENT"_s, u"me"_s}},
       {{u"Accept"_s, u"a/b"_s}, {u"User-Agent"_s, u"me"_s}}},
      {"a body", {}, true, true, {{u"content-type"_s, u"a/b"_s}}, {{u"Content-Type"_s, u"application/json"_s}}},
  };
  for (const auto& [name, token, bearer, hasBody, headers, expected] : cases) {
    SCOPED_TRACE(name);
    ServiceCall call = callOf(u"https://a.example"_s, token, headers);
    call.bearer = bearer;
    if (hasBody) call.body = QJsonObject{{u"a"_s, 1}};
    const HTTPRequest request = HTTPContract::request(call);
    for (auto [field, value] : expected.asKeyValueRange())
      EXPECT_EQ(request.headers.value(field.toUtf8()), value.toUtf8()) << qPrintable(field);
    EXPECT_EQ(request.headers.value("Authorization").has_value(), expected.contains(u"Authorization"_s));
    EXPECT_EQ(request.body, hasBody ? std::optional<QByteArray>("{\"a\":1}") : std::nullopt);
  }
}

TEST(HTTPContract, JudgesTheStatusBeforeTheBody) {
  const QByteArray fits(HTTPLimits::largestBody - 2, ' ');
  const struct {
    int status;
    QByteArray body;
    QString sentence;
  } cases[] = {
      {200, "{}", {}},
      {299, "[1]", {}},
      {200, "\xEF\xBB\xBF{}", {}},
      {200, fits + "{}", {}},
      {200, fits + "{} ", u"Response is too large."_s},
      {200, "", u"The service returned an invalid JSON response."_s},
      {200, "1", u"The service returned an invalid JSON response."_s},
      {200, "{\"a\":\"\xFF\"}", u"The service returned an invalid JSON response."_s},
      {200, "{} x", u"The service returned an invalid JSON response."_s},
      {200, QByteArray(100'000, '['), u"The service returned an invalid JSON response."_s},
      {0, "{}", u"The service returned an invalid response."_s},
      {199, "{}", u"Service returned HTTP 199. Check the connection settings."_s},
      {500, fits + fits, u"The service is temporarily unavailable (HTTP 500). Try again later."_s},
  };
  for (const auto& [status, body, sentence] : cases) {
    HTTPResponse response;
    response.status = status;
    response.body = body;
    EXPECT_EQ(sentenceOf([&] { HTTPContract::response(response); }), sentence) << status << body.left(20).toStdString();
  }
}

TEST(HTTPContract, ReadsWhenToComeBack) {
  const auto later = [](qint64 seconds) { return std::optional(kNow.addSecs(seconds)); };
  const struct {
    std::optional<QString> text;
    std::optional<QDateTime> expected;
  } cases[] = {
      {std::nullopt, std::nullopt},
      {u"0"_s, later(0)},
      {u"120"_s, later(120)},
      {u"0.5"_s, kNow.addMSecs(500)},
      {u"1e3"_s, later(1000)},
      {u"86401"_s, later(86'400)},
      {u"999999"_s, later(86'400)},
      {u"1e300"_s, later(86'400)},
      {u"1e999"_s, std::nullopt},
      {u"inf"_s, std::nullopt},
      {u"nan"_s, std::nullopt},
      {u"0x10"_s, std::nullopt},
      {u"-5"_s, std::nullopt},
      {u" 5"_s, std::nullopt},
      {u"5 "_s, std::nullopt},
      {u""_s, std::nullopt},
      {u"soon"_s, std::nullopt},
      {u"Tue, 24 Nov 2026 10:25:00 GMT"_s, later(60)},
      {u"Tue, 24 Nov 2026 10:23:59 GMT"_s, later(0)},
      {u"Tue, 01 Dec 2026 10:24:00 GMT"_s, later(86'400)},
      {u"Tue, 24 Nov 1926 10:24:00 GMT"_s, later(0)},
      {u"Tue, 32 Nov 2026 10:24:00 GMT"_s, std::nullopt},
      {u"Tue, 24 Nox 2026 10:24:00 GMT"_s, std::nullopt},
      {u"Tue, 24 Nov 2026 25:24:00 GMT"_s, std::nullopt},
      {u"Tue, 24 Nov 2026 10:25:00"_s, std::nullopt},
      {u"2026-11-24T10:25:00Z"_s, std::nullopt},
  };
  for (const auto& [text, expected] : cases)
    EXPECT_EQ(HTTPContract::retryDate(text, kNow), expected) << qPrintable(text.value_or(u"(none)"_s));
}

TEST(BaseAddresses, AreAllFitForTheContract) {
  const BaseAddresses shipped = BaseAddresses::shipped();
  for (int service = 0; service <= static_cast<int>(ServiceHost::ExchangeRates); ++service) {
    const QUrl address = shipped.of(static_cast<ServiceHost>(service));
    EXPECT_EQ(sentenceOf([&] { HTTPContract::request(callOf(address.toString())); }), QString()) << service;
    EXPECT_TRUE(address.path().isEmpty() && address.port() == -1) << service;
  }
}

}  // namespace
}  // namespace tarnwick
