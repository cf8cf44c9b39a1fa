#include <gtest/gtest.h>

#include <QCoroTask>
#include <QTemporaryDir>
#include <algorithm>

#include "TestServer.h"
#include "platform/net/module/NetworkTransport.h"
#include "secret/FakeSecretStore.h"
#include "services/CustomEndpoint.h"
#include "services/Keychain.h"
#include "services/WebSession.h"
#include "services/oauth/OAuthTokens.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"
#include "widgets/catalog/Kinds.h"
#include "widgets/catalog/Options.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using test::TestCertificates;
using test::TestReply;
using test::TestRequest;
using test::TestServer;

TEST(TwoHosts, EachGetsTheCredentialAloneThatWasEnteredForIt) {
  const auto answer = [](const TestRequest&) { return TestReply::of(200, "[7]"); };
  const QByteArray& certificate = TestCertificates::all().good;
  TestServer first(certificate, answer);
  TestServer second(certificate, answer, TestServer::As::Server, QHostAddress(u"127.0.0.2"_s));
  test::TestScheduler clock;
  QTemporaryDir folder;
  const Keychain keychain(std::make_shared<test::FakeSecretStore>(), folder.path());
  const auto transport = std::make_shared<NetworkTransport>(
      NetworkSetup{&clock, TestCertificates::all().authority},
      ProxyTable::Sources{[](const QUrl&) { return QList{QNetworkProxy(QNetworkProxy::NoProxy)}; },
                          [] { return QByteArray(); }});
  const auto kept = std::make_shared<WebSession>(transport, keychain, OAuthTokens(keychain), clock);

  DockWidget widget{QUuid::createUuid(), kind::revenueStripe.toString(), {}, {{option::field, u"0"_s}}};
  const auto goTo = [&](const QString& host, quint16 port) {
    widget.options[option::endpoint] = u"https://%1:%2/"_s.arg(host).arg(port);
  };
  const auto until = [&](const std::function<bool()>& holds) {
    return waitFor([&] {
      clock.advance(0);
      return holds();
    });
  };
  goTo(u"127.0.0.1"_s, first.port());
  bool isSaved = false;
  const auto save = [&]() -> QCoro::Task<> {
    co_await keychain.save(u"of-the-first"_s, Keychain::account(widget), u"Harbour"_s, SecretStore::Asking::Never);
    isSaved = true;
  };
  save();
  ASSERT_TRUE(until([&] { return isSaved; }));

  const struct {
    bool isSecond;
    std::optional<QString> typed;
    QByteArray sent;  ///< In lower case; empty for none.
  } cases[] = {{false, std::nullopt, "bearer of-the-first"},
               {true, std::nullopt, {}},
               {true, u"typed"_s, "bearer typed"},
               {true, std::nullopt, {}},
               {true, QString(), {}},
               {false, std::nullopt, "bearer of-the-first"},
               {false, QString(), {}}};
  for (const auto& each : cases) {
    TestServer& server = each.isSecond ? second : first;
    goTo(each.isSecond ? u"127.0.0.2"_s : u"127.0.0.1"_s, server.port());
    std::shared_ptr<ServiceSession> session = kept;
    if (each.typed) session = std::make_shared<TypedCredential>(kept, *each.typed);
    QString shown;
    const std::stop_token never;
    const auto fetch = [&]() -> QCoro::Task<> {
      const RemoteValue value = co_await CustomEndpoint::fetch(widget, session, never);
      shown = value.value.value_or(QString());
    };
    fetch();
    ASSERT_TRUE(until([&] { return shown == u"7"_s; }));
    const QByteArray head = server.received().last().head;
    EXPECT_EQ(head.count("authorization:"), each.sent.isEmpty() ? 0 : 1) << head.constData();
    if (!each.sent.isEmpty()) {
      EXPECT_TRUE(head.contains("\r\nauthorization: " + each.sent)) << head.constData();
    }
  }
}

}  // namespace
}  // namespace tarnwick
