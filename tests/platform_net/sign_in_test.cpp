// The whole way of a sign-in with real parts: a service over TLS, a browser, and the server that it comes back to.
#include <gtest/gtest.h>

#include <QCoroTask>
#include <QTemporaryDir>
#include <QUrlQuery>

#include "AuthorizationServer.h"
#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "platform/net/module/LoopbackListener.h"
#include "platform/net/module/NetworkTransport.h"
#include "secret/FakeSecretStore.h"
#include "secret/Told.h"
#include "services/ProviderTable.h"
#include "services/ServiceHTTPError.h"
#include "services/WebSession.h"
#include "services/oauth/OAuthContract.h"
#include "services/oauth/OAuthLoopback.h"
#include "services/oauth/OAuthSignIn.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using test::AuthorizationServer;
using test::TestBrowser;
using test::TestCertificates;

constexpr auto kReceived = "Sign-in received. You can close this tab and return to Tarnwick.";
constexpr auto kRefused = "This sign-in callback was not accepted. Return to Tarnwick and try again.";
const QString kPortTaken =
    u"The local sign-in port is unavailable. Close the other connection or choose a different port."_s;

QByteArray request(quint16 port, const QByteArray& target, const QByteArray& more = {}) {
  return "GET " + target + " HTTP/1.1\r\nHost: 127.0.0.1:" + QByteArray::number(port) + "\r\n" + more + "\r\n";
}

class Loopback : public ::testing::Test {
 protected:
  static MakeLoopbackServer maker(Scheduler& scheduler) {
    return [&scheduler] { return std::make_unique<LoopbackListener>(scheduler); };
  }
  bool comes(const std::function<bool()>& holds) {
    return waitFor([&] {
      clock.advance(0);
      return holds();
    });
  }
  /// Starts an attempt and waits for its code.
  void begin(quint16 at = 0) {
    loopback = std::make_unique<OAuthLoopback>(maker(clock), clock);
    const QString address = loopback->start(at, u"state"_s);
    port = static_cast<quint16>(QUrl(address).port());
    EXPECT_EQ(address, u"http://127.0.0.1:%1/callback"_s.arg(port));
    told = test::begin(code(loopback.get(), stop.get_token()));
  }
  static QCoro::Task<std::optional<QString>> code(OAuthLoopback* from, std::stop_token stop) {
    try {
      const QString code = co_await from->code(stop);
      co_return code;
    } catch (const OAuthDeclined&) {
      co_return OAuthDeclined::sentence();
    }
  }
  /// What a browser is answered, once the server has closed the line.
  QByteArray answer(TestBrowser& browser, const QByteArray& bytes) {
    browser.send(port, bytes);
    EXPECT_TRUE(comes([&] { return isClosed(browser); }));
    return browser.shown;
  }
  static bool isClosed(const TestBrowser& browser) { return browser.line.state() == QAbstractSocket::UnconnectedState; }
  QString end() {
    EXPECT_TRUE(comes([&] { return told->has_value(); }));
    return told->value_or(u"no end"_s);
  }

  test::TestScheduler clock;
  std::stop_source stop;
  std::unique_ptr<OAuthLoopback> loopback;
  quint16 port = 0;
  test::Told told;
};

TEST_F(Loopback, TakesItsOwnBrowserAloneAndOnce) {
  begin();
  const QByteArray good = "/callback?code=c&state=state";
  const QByteArray host = "127.0.0.1:" + QByteArray::number(port);
  const qsizetype rest = LoopbackLimits::largestRequest - request(port, good, "X: \r\n").size();
  const struct {
    const char* what;
    QByteArray bytes;
  } strays[] = {
      {"another state", request(port, "/callback?code=c&state=other")},
      {"another page", request(port, "/favicon.ico")},
      {"no code", request(port, "/callback?state=state")},
      {"another name of the machine",
       "GET " + good + " HTTP/1.1\r\nHost: localhost:" + host.split(':')[1] + "\r\n\r\n"},
      {"a name that leads here", "GET " + good + " HTTP/1.1\r\nhOsT:\t" + host + ".evil.example\r\n\r\n"},
      {"another port", "GET " + good + " HTTP/1.1\r\nHost: 127.0.0.1:1\r\n\r\n"},
      {"no host", "GET " + good + " HTTP/1.1\r\n\r\n"},
      {"two hosts", request(port, good, "Host: localhost\r\n")},
      {"another method", "POST" + request(port, good).sliced(3)},
      {"one word", "GET\r\nHost: " + host + "\r\n\r\n"},
      {"too long by one", request(port, good, "X: " + QByteArray(rest + 1, 'x') + "\r\n")},
      {"much too long", request(port, good, "X: " + QByteArray(300'000, 'x') + "\r\n")},
  };
  for (const auto& each : strays) {
    TestBrowser browser;
    EXPECT_EQ(answer(browser, each.bytes), QByteArray("HTTP/1.1 400 Bad Request\r\nContent-Type: text/plain; "
                                                      "charset=utf-8\r\nCache-Control: no-store\r\nContent-Length: ") +
                                               QByteArray::number(qstrlen(kRefused)) + "\r\nConnection: close\r\n\r\n" +
                                               kRefused)
        << each.what;
    EXPECT_FALSE(told->has_value()) << each.what;
  }
  // One that leaves before it has said all.
  TestBrowser brief;
  brief.send(port, "GET " + good);
  EXPECT_TRUE(comes([&] { return brief.line.state() == QAbstractSocket::ConnectedState; }));
  brief.line.disconnectFromHost();
  // It listens on this one address.
  QTcpSocket neighbour;
  neighbour.connectToHost(QHostAddress(u"127.0.0.2"_s), port);
  EXPECT_FALSE(neighbour.waitForConnected(10'000));

  TestBrowser late;
  late.send(port, "GET");
  EXPECT_TRUE(comes([&] { return late.line.bytesToWrite() == 0 && late.line.isOpen(); }));
  TestBrowser browser;
  const QByteArray longest = request(port, good, "X: " + QByteArray(rest, 'x') + "\r\n");
  EXPECT_EQ(longest.size(), 16'384);
  EXPECT_TRUE(answer(browser, longest).endsWith(kReceived)) << browser.shown.toStdString();
  EXPECT_TRUE(browser.shown.startsWith("HTTP/1.1 200 OK\r\n"));
  EXPECT_EQ(end(), u"c"_s);
  late.line.write(request(port, good).sliced(3));
  EXPECT_TRUE(comes([&] { return isClosed(late); }));
  EXPECT_TRUE(late.shown.endsWith(kRefused)) << "it is taken once";
  TestBrowser after;
  EXPECT_EQ(answer(after, request(port, good)), QByteArray()) << "nobody listens any more";
}

TEST_F(Loopback, EndsByRefusalTimeOrWhoeverStopsItAndFreesThePort) {
  const struct {
    const char* what;
    std::function<void()> happens;
    QString end;
  } cases[] = {
      {"declined",
       [this] {
         TestBrowser browser;
         EXPECT_TRUE(answer(browser, request(port, "/callback?error=access_denied&state=state")).endsWith(kRefused));
       },
       u"Sign-in was declined or cancelled."_s},
      {"time", [this] { clock.advance(180); }, u"Sign-in timed out. Connect again when you’re ready."_s},
      {"stopped", [this] { loopback->stop(std::make_exception_ptr(DomainError::invalid(u"Sign-in cancelled."_s))); },
       u"Sign-in cancelled."_s},
      {"gone", [this] { loopback.reset(); }, u"cancelled"_s},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    begin(port);
    try {
      OAuthLoopback(maker(clock), clock).start(port, u"other"_s);
      ADD_FAILURE() << "the port is taken";
    } catch (const DomainError& error) {
      EXPECT_EQ(error.message(), kPortTaken);
    }
    clock.advance(179.5);
    EXPECT_FALSE(told->has_value());
    each.happens();
    EXPECT_EQ(end(), each.end);
    QTcpServer next;
    EXPECT_TRUE(next.listen(QHostAddress::LocalHost, port));
  }
}

TEST_F(Loopback, IsHeldUpByNobody) {
  begin();
  std::array<TestBrowser, LoopbackLimits::connections> slow;
  for (TestBrowser& each : slow) {
    // The first never reads what it is answered; the others are never done with asking.
    each.line.setReadBufferSize(1);
    each.send(port, &each == &slow.front() ? request(port, "/") : "GET /callback");
  }
  EXPECT_TRUE(comes([&] {
    return std::ranges::all_of(slow, [](const TestBrowser& each) {
      return each.line.state() == QAbstractSocket::ConnectedState && each.line.bytesToWrite() == 0;
    });
  }));
  TestBrowser ninth;
  EXPECT_EQ(answer(ninth, request(port, "/callback?code=c&state=state")), QByteArray());
  EXPECT_FALSE(told->has_value());
  clock.advance(LoopbackLimits::seconds);
  TestBrowser browser;
  EXPECT_TRUE(answer(browser, request(port, "/callback?code=c&state=state")).endsWith(kReceived));
  EXPECT_EQ(end(), u"c"_s);
}

/// A sign-in with all that belongs to it, at a service of the test's own.
class SignInAtAService : public Loopback {
 protected:
  static DockWidget folderWidget() {
    return {QUuid::createUuid(), u"dropbox"_s, {}, {{u"endpoint"_s, u"https://api.dropboxapi.com"_s}}};
  }
  OAuthVisit visit(const std::function<QUrl(QUrl)>& leads = {}) {
    return {.open =
                [this, leads](const QUrl& page, const std::function<void(bool)>& done) {
                  opened = page;
                  if (canOpen) browser.open(leads ? leads(page) : page);
                  done(canOpen);
                },
            .returned = {}};
  }
  QCoro::Task<> signIn(DockWidget widget, OAuthVisit visit) {
    return signInAndKeep(OAuthSignIn(session, maker(clock), clock), tokens, service.at(row), widget, visit,
                         stop.get_token());
  }
  static QCoro::Task<> signInAndKeep(OAuthSignIn signIn, OAuthTokens tokens, OAuthProvider provider, DockWidget widget,
                                     OAuthVisit visit, std::stop_token stop) {
    const OAuthClient client{AuthorizationServer::kClient, AuthorizationServer::kSecret};
    OAuthRecord record;
    try {
      record = co_await signIn.run(provider, client, visit, stop);
    } catch (const ServiceHTTPError& error) {
      throw DomainError::invalid(error.errorDescription());
    }
    co_await tokens.keep(widget, record, u"Dropbox"_s, stop);
  }
  static QCoro::Task<std::optional<QString>> sentence(QCoro::Task<QString> work) {
    try {
      const QString token = co_await work;
      co_return token;
    } catch (const ServiceHTTPError& error) {
      co_return error.errorDescription();
    }
  }
  static QCoro::Task<std::optional<QString>> sendable(std::shared_ptr<WebSession> session, DockWidget widget) {
    const std::stop_token stop;
    const MaybeCredential found = co_await session->credentialIfAny(widget, stop);
    co_return found.value;
  }
  test::Told token(const DockWidget& widget, const OAuthProvider& provider) {
    return test::begin(sentence(tokens.token(widget, provider, session, {})));
  }
  QString outcome(const test::Told& which) {
    told = which;
    return end();
  }

  QTemporaryDir folder;
  std::shared_ptr<test::FakeSecretStore> secrets = std::make_shared<test::FakeSecretStore>();
  Keychain keychain{secrets, folder.path()};
  OAuthTokens tokens{keychain};
  std::shared_ptr<WebSession> session = std::make_shared<WebSession>(
      std::make_shared<NetworkTransport>(NetworkSetup{&clock, TestCertificates::all().authority}), keychain, tokens,
      clock);
  AuthorizationServer service;
  TestBrowser browser;
  const OAuthProvider row = *providerFor(u"dropbox"_s)->signIn;
  QUrl opened;
  bool canOpen = true;
};

TEST_F(SignInAtAService, GivesTokensThatAreRenewedOnceForAllWhoAsk) {
  const DockWidget widget = folderWidget();
  service.expire(60);
  EXPECT_EQ(outcome(test::begin(signIn(widget, visit()))), u"done"_s);
  EXPECT_TRUE(comes([&] { return browser.shown.endsWith(kReceived); }));
  EXPECT_EQ(secrets->items.size(), 1);

  // A service that gives no new refresh token means the old one; two that ask at once come to one request.
  service.leaveOutRefreshToken(true);
  service.expire(3600);
  const auto first = token(widget, service.at(row));
  const auto second = token(widget, service.at(row));
  const QString renewed = outcome(first);
  EXPECT_EQ(outcome(second), renewed);
  EXPECT_EQ(outcome(token(widget, service.at(row))), renewed);
  EXPECT_EQ(service.exchanges(), (QStringList{u"code"_s, u"refresh"_s}));
  const auto kept = OAuthRecord::decode(QString::fromUtf8(secrets->items.first().value));
  EXPECT_EQ(kept->accessToken, renewed);
  EXPECT_FALSE(kept->refreshToken.isEmpty());
  clock.advance(3600);
  EXPECT_NE(outcome(token(widget, service.at(row))), renewed);
  EXPECT_EQ(service.exchanges().size(), 3) << "by the refresh token of before";

  // It is nothing to be sent to an address of the user's own.
  EXPECT_EQ(outcome(test::begin(sendable(session, widget))), QString());

  // It is no sign-in to another service.
  EXPECT_EQ(outcome(token(widget, service.at(*providerFor(u"gmailLatest"_s)->signIn))),
            u"This saved sign-in belongs to a different provider."_s);
}

TEST_F(SignInAtAService, EndsWithTheSentenceOfWhatWentWrong) {
  const auto spoiled = [](const char* key) {
    return [key](QUrl page) {
      QUrlQuery query(page);
      const QString name = QString::fromLatin1(key);
      const QString before = query.queryItemValue(name, QUrl::FullyDecoded);
      query.removeAllQueryItems(name);
      query.addQueryItem(name, u"x"_s + before);
      page.setQuery(query);
      return page;
    };
  };
  const struct {
    const char* what;
    std::function<void()> before;
    std::function<QUrl(QUrl)> leads;
    QString end;
  } cases[] = {
      {"declined", [&] { service.decline(true); }, {}, u"Sign-in was declined or cancelled."_s},
      {"another's proof",
       {},
       spoiled("code_challenge"),
       u"Service returned HTTP 400. Check the connection settings."_s},
      {"no offline access",
       [&] { service.leaveOutRefreshToken(true); },
       {},
       u"The provider did not return offline access. Reconnect and allow the requested read access."_s},
      {"no browser", [&] { canOpen = false; }, {}, u"The browser could not be opened."_s},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    if (each.before) each.before();
    EXPECT_EQ(outcome(test::begin(signIn(folderWidget(), visit(each.leads)))), each.end);
    service.decline(false);
    service.leaveOutRefreshToken(false);
    canOpen = true;
  }
  // One that comes back with another state is waited on; the view that is closed ends that and frees the port.
  const auto waiting = test::begin(signIn(folderWidget(), visit(spoiled("state"))));
  EXPECT_TRUE(comes([&] { return browser.shown.endsWith(kRefused); }));
  EXPECT_FALSE(waiting->has_value());
  const QUrl redirect(QUrlQuery(opened).queryItemValue(u"redirect_uri"_s, QUrl::FullyDecoded));
  stop.request_stop();
  EXPECT_EQ(outcome(waiting), u"cancelled"_s);
  QTcpServer next;
  EXPECT_TRUE(next.listen(QHostAddress::LocalHost, static_cast<quint16>(redirect.port())));
  EXPECT_TRUE(secrets->items.isEmpty());
}

}  // namespace
}  // namespace tarnwick
