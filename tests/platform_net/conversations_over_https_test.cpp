#include <gtest/gtest.h>

#include <QCoroTask>
#include <QJsonDocument>
#include <mutex>

#include "TestServer.h"
#include "base/DomainError.h"
#include "platform/net/module/NetworkTransport.h"
#include "services/ProviderTable.h"
#include "services/RemoteAPI.h"
#include "services/ServiceHTTPError.h"
#include "support/Conversations.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using test::Conversation;
using test::TestCertificates;
using test::TestReply;
using test::TestRequest;
using test::TestServer;

/// Leads every request to the test's server, and writes down where it was to go.
class Detour final : public HTTPTransport {
 public:
  Detour(std::shared_ptr<HTTPTransport> transport, quint16 port) : transport_(std::move(transport)), port_(port) {}

  std::unique_ptr<HTTPTransfer> send(HTTPRequest request, Done done) override {
    origins << request.url.toString(QUrl::RemovePath | QUrl::RemoveQuery);
    request.url.setHost(u"127.0.0.1"_s);
    request.url.setPort(port_);
    return transport_->send(std::move(request), std::move(done));
  }

  QStringList origins;

 private:
  std::shared_ptr<HTTPTransport> transport_;
  quint16 port_;
};

class NetSession final : public ServiceSession {
 public:
  explicit NetSession(std::shared_ptr<HTTPTransport> transport) : transport_(std::move(transport)) {}

  QCoro::Task<QJsonValue> json(ServiceCall call, std::stop_token stop) override {
    return RemoteAPI::json(transport_, std::move(call), stop);
  }
  QCoro::Task<QString> credential(DockWidget, std::stop_token) override { co_return u"key"_s; }
  QDateTime now() const override { return {QDate(2026, 11, 24), QTime(10, 24), QTimeZone::utc()}; }

 private:
  std::shared_ptr<HTTPTransport> transport_;
};

/// What a request is on the wire, as `told` tells a call. What the contract adds to every one is checked here.
QString received(const QString& origin, const TestRequest& request) {
  ServiceCall call;
  call.url = QUrl(origin + QString::fromLatin1(request.path), QUrl::StrictMode);
  QMap<QByteArray, QByteArray> common;
  const QList<QByteArray> lines = request.lines.split('\n');
  for (const QByteArray& line : lines.sliced(1)) {
    const qsizetype colon = line.indexOf(':');
    const QByteArray name = line.left(colon);
    const QByteArray value = line.mid(colon + 1).trimmed();
    static const QByteArrayList contract{"accept",         "user-agent", "content-type",    "host",
                                         "content-length", "connection", "accept-encoding", "accept-language",
                                         "cache-control",  "pragma"};
    if (contract.contains(name.toLower())) {
      common.insert(name.toLower(), value);
    } else if (name.toLower() == "authorization") {
      call.bearer = value.startsWith("Bearer ");
      call.token = QString::fromLatin1(call.bearer ? value.mid(7) : value);
    } else {
      call.headers.insert(QString::fromLatin1(name), QString::fromLatin1(value));
    }
  }
  EXPECT_EQ(common.value("accept"), "application/json");
  EXPECT_EQ(common.value("user-agent"), "Tarnwick/0.2");
  EXPECT_EQ(request.method, request.body.isEmpty() ? "GET" : "POST");
  if (!request.body.isEmpty()) {
    EXPECT_EQ(common.value("content-type"), "application/json");
    call.body = QJsonDocument::fromJson(request.body).object();
  }
  return test::told(call);
}

class OverHTTPS : public ::testing::Test {
 protected:
  OverHTTPS() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }
  ~OverHTTPS() override { QLocale::setDefault(QLocale::system()); }

  /// What a fetch shows whose service answers so, one after the other.
  QString shown(const QString& kind, const QMap<QString, QString>& options, const QList<TestReply>& replies) {
    {
      const std::lock_guard lock(mutex_);
      replies_ = replies;
    }
    detour_->origins.clear();
    first_ = server_.received().size();
    QString outcome;
    bool isOver = false;
    const DockWidget widget{QUuid::createUuid(), kind, {}, options};
    const std::stop_token never;
    const auto run = [&]() -> QCoro::Task<> {
      try {
        const RemoteValue value = co_await fetchFrom(*providerFor(kind), widget, session_, never);
        outcome = test::told(value);
      } catch (const ServiceHTTPError& error) {
        outcome = error.errorDescription();
      } catch (const DomainError& error) {
        outcome = error.message();
      }
      isOver = true;
    };
    const QCoro::Task<> task = run();
    EXPECT_TRUE(waitFor([&] {
      clock_.advance(0);
      return isOver;
    }));
    return outcome;
  }
  QStringList requests() const {
    QStringList told;
    const QList<TestRequest> all = server_.received().sliced(first_);
    for (qsizetype i = 0; i < all.size(); ++i) told << received(detour_->origins.value(i), all[i]);
    return told;
  }

 private:
  TestReply next() {
    const std::lock_guard lock(mutex_);
    return replies_.isEmpty() ? TestReply::of(500, {}) : replies_.takeFirst();
  }

  std::mutex mutex_;
  QList<TestReply> replies_;
  qsizetype first_ = 0;
  test::TestScheduler clock_;
  TestServer server_{TestCertificates::all().good, [this](const TestRequest&) { return next(); }};
  std::shared_ptr<Detour> detour_ = std::make_shared<Detour>(
      std::make_shared<NetworkTransport>(
          NetworkSetup{&clock_, TestCertificates::all().authority},
          ProxyTable::Sources{[](const QUrl&) { return QList{QNetworkProxy(QNetworkProxy::NoProxy)}; },
                              [] { return QByteArray(); }}),
      server_.port());
  std::shared_ptr<NetSession> session_ = std::make_shared<NetSession>(detour_);
};

TEST_F(OverHTTPS, EveryConversationIsTheSameAsScripted) {
  for (const Conversation& each : test::conversations()) {
    SCOPED_TRACE(each.kind.toStdString());
    QList<TestReply> replies;
    QStringList expected;
    for (const test::Exchange& exchange : each.exchanges) {
      const int status = exchange.answer.toInt();
      replies << TestReply::of(status ? status : 200, status ? QByteArray() : exchange.answer.toUtf8());
      expected << exchange.request;
    }
    EXPECT_EQ(shown(each.kind, each.options, replies).toStdString(), each.shown.toStdString());
    EXPECT_EQ(requests().join(u'\n').toStdString(), expected.join(u'\n').toStdString());
  }
}

TEST_F(OverHTTPS, WhatIsNoAnswerEndsWithASentence) {
  const QString noJSON = u"The service returned an invalid JSON response."_s;
  const struct {
    QByteArray body;
    QByteArray headers;
    QString shown;
  } cases[] = {
      {R"({"forks":1e400})", {}, noJSON},
      {R"({"forks":NaN})", {}, noJSON},
      {R"({"forks":Infinity})", {}, noJSON},
      {R"({"forks":01})", {}, noJSON},
      {"<!DOCTYPE html><html><body>Sign in</body></html>", "Content-Type: text/html\r\n", noJSON},
      {{}, {}, noJSON},
      {R"("7")", {}, noJSON},
      {"{\"forks\":7,\"name\":\"caf\xe9\"}", "Content-Type: application/json; charset=ISO-8859-1\r\n", noJSON},
      {QByteArray("{\0\"\0f\0\"\0:\0"
                  "7\0}\0",
                  14),
       "Content-Type: application/json; charset=UTF-16LE\r\n", noJSON},
      // What is UTF-8 counts, whatever is said of it.
      {R"({"forks":7})", "Content-Type: text/plain; charset=windows-1252\r\n", u"7 | Repository forks | a/b"_s},
      {"\xef\xbb\xbf{\"forks\":7}", {}, u"7 | Repository forks | a/b"_s},
  };
  for (const auto& [body, headers, expected] : cases) {
    EXPECT_EQ(shown(u"analyticsGitHub"_s, {{u"repository"_s, u"a/b"_s}, {u"field"_s, u"forks"_s}},
                    {TestReply::of(200, body, headers)})
                  .toStdString(),
              expected.toStdString())
        << body.toStdString();
  }
}

}  // namespace
}  // namespace tarnwick
