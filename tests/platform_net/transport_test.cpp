#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>
#include <zlib.h>

#include <QCoroTask>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QSemaphore>
#include <QTcpServer>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

#include "TestServer.h"
#include "base/Cancelled.h"
#include "base/DomainError.h"
#include "platform/net/LoadedTransport.h"
#include "platform/net/module/NetworkTransport.h"
#include "services/RemoteAPI.h"
#include "services/ServiceHTTPError.h"
#include "support/ChildProcess.h"
#include "support/TestScheduler.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;
using test::TestCertificates;
using test::TestReply;
using test::TestRequest;
using test::TestServer;
using After = TestReply::After;

const QString kUnreachable = u"The service could not be reached. Check your connection and service address."_s;
const QString kTooLarge = u"Response is too large."_s;
const QString kNoJSON = u"The service returned an invalid JSON response."_s;
const QString kLate = u"The service did not respond within 20 seconds."_s;

/// How a request came out.
struct Outcome {
  std::stop_source stop;
  bool isOver = false;
  bool isCancelled = false;
  std::optional<QJsonValue> value;
  QString sentence;
  std::optional<QDateTime> retryAt;
};

QCoro::Task<> follow(std::shared_ptr<HTTPTransport> transport, ServiceCall call, std::shared_ptr<Outcome> outcome) {
  try {
    const QJsonValue value = co_await RemoteAPI::json(transport, call, outcome->stop.get_token());
    outcome->value = value;
  } catch (const Cancelled&) {
    outcome->isCancelled = true;
  } catch (const ServiceHTTPError& error) {
    outcome->sentence = error.errorDescription();
    outcome->retryAt = error.retryAt();
  } catch (const DomainError& error) {
    outcome->sentence = error.message();
  }
  outcome->isOver = true;
}

ProxyTable::Sources noProxies() {
  return {[](const QUrl&) { return QList{QNetworkProxy(QNetworkProxy::NoProxy)}; }, [] { return QByteArray(); }};
}

/// A transport whose clock the test sets, and its server.
struct Net {
  explicit Net(TestServer::Answer answer = {}, QByteArray certificate = TestCertificates::all().good,
               ProxyTable::Sources proxies = noProxies())
      : server(certificate, std::move(answer)) {
    const NetworkSetup setup{&clock, TestCertificates::all().authority};
    transport = std::make_shared<NetworkTransport>(setup, std::move(proxies));
  }

  std::shared_ptr<Outcome> ask(const QString& path, const QString& token = {}) {
    return askAt("https://127.0.0.1:"_L1 + QString::number(server.port()) + path, token);
  }
  std::shared_ptr<Outcome> askAt(const QString& address, const QString& token = {}) {
    ServiceCall call;
    call.url = QUrl(address);
    call.token = token;
    auto outcome = std::make_shared<Outcome>();
    follow(transport, call, outcome);
    return outcome;
  }
  bool until(const std::function<bool()>& holds) {
    return waitFor([&] {
      clock.advance(0);
      return holds();
    });
  }
  std::shared_ptr<Outcome> result(const QString& path, const QString& token = {}) {
    auto outcome = ask(path, token);
    EXPECT_TRUE(until([&] { return outcome->isOver; })) << qPrintable(path);
    return outcome;
  }

  test::TestScheduler clock;
  TestServer server;
  std::shared_ptr<HTTPTransport> transport;
};

QByteArray chunked(const QByteArray& body) {
  return "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + QByteArray::number(body.size(), 16) + "\r\n" + body +
         "\r\n0\r\n\r\n";
}

/// One member of a gzip stream.
QByteArray gzipped(QByteArray body) {
  z_stream stream{};
  constexpr int gzip = MAX_WBITS + 16;
  deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, gzip, 8, Z_DEFAULT_STRATEGY);
  QByteArray packed(static_cast<qsizetype>(deflateBound(&stream, static_cast<uLong>(body.size()))), Qt::Uninitialized);
  stream.next_in = reinterpret_cast<Bytef*>(body.data());
  stream.avail_in = static_cast<uInt>(body.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  deflate(&stream, Z_FINISH);
  packed.truncate(static_cast<qsizetype>(stream.total_out));
  deflateEnd(&stream);
  return packed;
}

TestReply asGzip(const QByteArray& packed) { return TestReply::of(200, packed, "Content-Encoding: gzip\r\n"); }
TestReply packed(const QByteArray& body) { return asGzip(gzipped(body)); }

/// JSON of exactly so many bytes.
QByteArray json(qsizetype size) { return '[' + QByteArray(size - 2, ' ') + ']'; }

struct Case {
  const char* name;
  TestReply reply;
  QString sentence;  ///< Empty for a success.
  std::optional<qint64> pause = std::nullopt;
};

const QList<Case>& cases() {
  const auto limit = HTTPLimits::largestBody;
  const QString redirected =
      u"The service redirected this request. Update the connection address; credentials were not forwarded."_s;
  const QString rejected = u"The service credential expired or was rejected. Reconnect in Connection Settings."_s;
  const auto paused = [](const QByteArray& after) {
    return TestReply::of(429, "{}", after.isEmpty() ? after : "Retry-After: " + after + "\r\n");
  };
  const auto until = [](qint64 seconds) {
    return ServiceHTTPError(429, test::TestScheduler().now().addSecs(seconds)).errorDescription();
  };
  const QString later = ServiceHTTPError(429).errorDescription();
  const QByteArray some = QByteArrayLiteral("[1,2,3,4,5,6,7,8,9,\"abcdefghijkl\"]");
  const QByteArray one = gzipped(some);
  static const QList<Case> kCases = {
      {"plain", TestReply::of(200, "{\"a\":1}"), {}},
      {"chunked", {chunked("[1]")}, {}},
      {"until it closes", {"HTTP/1.1 200 OK\r\n\r\n[1]", After::Close}, {}},
      {"packed", packed("[1]"), {}},
      {"packed as zlib does", TestReply::of(200, qCompress(some).mid(4), "Content-Encoding: deflate\r\n"), {}},
      {"slow", {TestReply::of(200, "{\"a\":1}").bytes, After::Slowly}, {}},
      {"half-closed behind it", {TestReply::of(200, "[1]").bytes, After::HalfClose}, {}},
      {"half-closed within it", {"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n[1]", After::HalfClose}, kUnreachable},
      {"the largest", TestReply::of(200, json(limit)), {}},
      {"the largest, packed", packed(json(limit)), {}},
      {"too large", TestReply::of(200, json(limit + 1)), kTooLarge},
      {"too large in chunks", {chunked(json(limit + 1))}, kTooLarge},
      {"too large, packed", packed(json(limit + 1)), kTooLarge},
      {"a bomb", packed(QByteArray(100'000'000, ' ')), kTooLarge},
      {"two bombs", asGzip(gzipped(json(limit)) + gzipped(json(limit))), kTooLarge},
      {"packed otherwise", TestReply::of(200, "no zip", "Content-Encoding: gzip\r\n"), kUnreachable},
      {"packed and cut", asGzip(one.chopped(6)), kUnreachable},
      {"packed in two parts", asGzip(gzipped("[1,") + gzipped("2]")), {}},
      {"damaged", asGzip(QByteArray(one).replace(30, 4, "\xFF\xFF\xFF\xFF")), kUnreachable},
      {"another checksum", asGzip(one.chopped(8) + "\1\2\3\4" + one.last(4)), kUnreachable},
      {"packed nothing", asGzip({}), kNoJSON},
      {"204, packed", {"HTTP/1.1 204 No Content\r\nContent-Encoding: gzip\r\n\r\n"}, kNoJSON},
      {"no JSON", TestReply::of(200, "<html>"), kNoJSON},
      {"no JSON, large", TestReply::of(200, QByteArray(200'000, 'x')), kNoJSON},
      {"no UTF-8", TestReply::of(200, "[\"\xFF\xFE\"]"), kNoJSON},
      {"nothing", TestReply::of(200, ""), kNoJSON},
      {"204", {"HTTP/1.1 204 No Content\r\n\r\n"}, kNoJSON},
      {"a deep one", TestReply::of(200, QByteArray(100'000, '[')), kNoJSON},
      {"half of it", {"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n[1]", After::Close}, kUnreachable},
      {"half a chunk", {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nff\r\n[1", After::Close}, kUnreachable},
      {"closed at once", {"", After::Close}, kUnreachable},
      {"no HTTP", {"SSH-2.0-Hello\r\n\r\n", After::Close}, kUnreachable},
      {"302", TestReply::of(302, "", "Location: /plain\r\n"), redirected},
      {"308 to nowhere", TestReply::of(308, "", "Location: http://x.example/\r\n"), redirected},
      {"304", {"HTTP/1.1 304 Not Modified\r\n\r\n"}, redirected},
      {"401", TestReply::of(401, "no"), rejected},
      {"401 that asks", TestReply::of(401, "no", "WWW-Authenticate: Basic realm=\"x\"\r\n"), rejected},
      {"401, large", TestReply::of(401, json(limit + 1'000'000)), rejected},
      {"404 that never ends",
       {"HTTP/1.1 404 No\r\n\r\nsorry", After::Dribble},
       ServiceHTTPError(404).errorDescription()},
      {"503", TestReply::of(503, "", "Retry-After: 120\r\n"), ServiceHTTPError(503).errorDescription(), 120},
      {"429", paused(""), later},
      {"429 in seconds", paused("120"), until(120), 120},
      {"429 too long", paused("999999"), until(86'400), 86'400},
      {"429 until a date", paused("Tue, 24 Nov 2026 10:26:00 GMT"), until(120), 120},
      {"429 until yesterday", paused("Mon, 23 Nov 2026 10:24:00 GMT"), until(0), 0},
      {"429 in words", paused("soon"), later},
      {"429 negative", paused("-5"), later},
  };
  return kCases;
}

TestReply byTable(const TestRequest& request) { return cases()[request.path.mid(1).toInt()].reply; }

TEST(NetworkTransport, TellsWhatCameOfEachAnswer) {
  Net net(byTable);
  for (qsizetype index = 0; index < cases().size(); ++index) {
    const Case& each = cases()[index];
    SCOPED_TRACE(each.name);
    const auto outcome = net.result(u'/' + QString::number(index), u"key"_s);
    EXPECT_EQ(outcome->value.has_value(), each.sentence.isEmpty());
    EXPECT_EQ(outcome->sentence, each.sentence);
    EXPECT_EQ(outcome->retryAt, each.pause ? std::optional(net.clock.now().addSecs(*each.pause)) : std::nullopt);
  }
  // Nothing was asked for that was not in the table, so no redirection was followed.
  for (const TestRequest& request : net.server.received()) {
    EXPECT_NE(request.path, "/plain");
    EXPECT_TRUE(request.head.contains("\r\nauthorization: bearer key")) << request.head.toStdString();
    EXPECT_TRUE(request.head.contains("\r\nuser-agent: tarnwick/0.2"));
  }
  EXPECT_EQ(net.clock.waiting(), 0) << "a deadline is left";
}

TEST(NetworkTransport, UnpacksMuchOverSeveralTurns) {
  Net net([](const TestRequest&) { return packed(json(HTTPLimits::largestBody)); });
  const auto outcome = net.ask(u"/"_s);
  ASSERT_TRUE(net.until([&] { return !net.server.received().isEmpty(); }));
  // Until the clock goes on nothing but the deadline waits, and then what is left to be unpacked.
  ASSERT_TRUE(waitFor([&] { return outcome->isOver || net.clock.waiting() > 1; }));
  EXPECT_FALSE(outcome->isOver);
  ASSERT_TRUE(net.until([&] { return outcome->isOver; }));
  EXPECT_TRUE(outcome->value.has_value());
}

TEST(NetworkTransport, PicksWhatIsWantedOfMuchWhereItIsDecoded) {
  Net net([](const TestRequest&) { return TestReply::of(200, "[7," + QByteArray(100'000, ' ') + "8]"); });
  std::atomic<bool> isHere = true;
  ServiceCall call;
  call.url = QUrl("https://127.0.0.1:"_L1 + QString::number(net.server.port()));
  const auto picked = [&](const std::function<QJsonValue(const QJsonValue&)>& pick) {
    call.pick = [&isHere, pick, here = std::this_thread::get_id()](const QJsonValue& all) {
      isHere = here == std::this_thread::get_id();
      return pick(all);
    };
    auto outcome = std::make_shared<Outcome>();
    follow(net.transport, call, outcome);
    EXPECT_TRUE(net.until([&] { return outcome->isOver; }));
    return outcome;
  };
  EXPECT_EQ(picked([](const QJsonValue& all) { return all[1]; })->value, QJsonValue(8));
  EXPECT_FALSE(isHere);
  EXPECT_EQ(picked([](const QJsonValue&) -> QJsonValue { throw DomainError::invalid(u"None."_s); })->sentence,
            u"None."_s);
}

TEST(NetworkTransport, SendsABodyAndNoLineBreak) {
  Net net([](const TestRequest&) { return TestReply::of(200, "{}"); });
  ServiceCall call;
  call.url = QUrl("https://127.0.0.1:"_L1 + QString::number(net.server.port()) + "/post"_L1);
  call.body = QJsonObject{{u"query"_s, u"ü"_s}};
  const auto sent = std::make_shared<Outcome>();
  follow(net.transport, call, sent);
  call.headers = {{u"X"_s, u"a\r\nY: b"_s}};
  const auto refused = std::make_shared<Outcome>();
  follow(net.transport, call, refused);
  EXPECT_EQ(refused->sentence, u"A service credential contains a line break."_s);
  ASSERT_TRUE(net.until([&] { return sent->isOver; }));
  ASSERT_EQ(net.server.received().size(), 1);
  EXPECT_EQ(net.server.received().first().method, "POST");
  EXPECT_EQ(net.server.received().first().body, "{\"query\":\"ü\"}");
  EXPECT_TRUE(net.server.received().first().head.contains("\r\ncontent-type: application/json"));
}

TEST(NetworkTransport, KeepsNothingFromOneRequestToTheNext) {
  Net net([](const TestRequest&) {
    return TestReply::of(200, "{}", "Set-Cookie: a=b\r\nCache-Control: max-age=999\r\nETag: \"x\"\r\n");
  });
  for (int turn = 0; turn < 2; ++turn) net.result(u"/same"_s, turn == 0 ? u"key"_s : QString());
  ASSERT_EQ(net.server.received().size(), 2) << "it was not asked again";
  const QByteArray second = net.server.received().last().head;
  for (const char* field : {"\r\ncookie:", "\r\nauthorization:", "\r\nif-none-match:", "\r\nreferer:"})
    EXPECT_FALSE(second.contains(field)) << field;
}

TEST(NetworkTransport, NeverCarriesACredentialToAnotherHost) {
  Net other([](const TestRequest&) { return TestReply::of(200, "{}"); });
  Net net([port = other.server.port()](const TestRequest&) {
    return TestReply::of(302, "", "Location: https://localhost:" + QByteArray::number(port) + "/\r\n");
  });
  const auto outcome = net.result(u"/"_s, u"key"_s);
  EXPECT_EQ(outcome->sentence, ServiceHTTPError(302).errorDescription());
  net.result(u"/"_s, u"key"_s);
  EXPECT_TRUE(other.server.received().isEmpty());
  EXPECT_EQ(other.server.accepted(), 0);
}

TEST(NetworkTransport, TrustsNoWrongCertificate) {
  const TestCertificates& made = TestCertificates::all();
  ASSERT_FALSE(made.stranger.isEmpty());
  for (const QByteArray& certificate : {made.foreign, made.expired, made.stranger}) {
    Net net([](const TestRequest&) { return TestReply::of(200, "{}"); }, certificate);
    EXPECT_EQ(net.result(u"/"_s, u"key"_s)->sentence, kUnreachable);
    EXPECT_TRUE(net.server.received().isEmpty());
    EXPECT_EQ(net.server.accepted(), 1);
  }
}

TEST(NetworkTransport, SaysWhereNobodyListens) {
  Net net;
  QTcpServer closed;
  closed.listen(QHostAddress::LocalHost);
  const QString address = "https://127.0.0.1:"_L1 + QString::number(closed.serverPort());
  closed.close();
  const auto outcome = net.askAt(address);
  ASSERT_TRUE(net.until([&] { return outcome->isOver; }));
  EXPECT_EQ(outcome->sentence, kUnreachable);
}

TEST(NetworkTransport, GivesUpTwentySecondsAfterItsTurnWhateverStillComes) {
  Net net([](const TestRequest& request) {
    const bool dribbles = request.path == "/dribble";
    return TestReply{dribbles ? "HTTP/1.1 200 OK\r\n\r\n" : "", dribbles ? After::Dribble : After::Hold};
  });
  for (const QString& path : {u"/silent"_s, u"/dribble"_s}) {
    SCOPED_TRACE(qPrintable(path));
    const auto outcome = net.ask(path);
    const auto before = net.server.received().size();
    ASSERT_TRUE(net.until([&] { return net.server.received().size() > before; }));
    net.clock.advance(19.9);
    if (path == u"/dribble"_s) {
      const int sent = net.server.dribbled();
      ASSERT_TRUE(net.until([&] { return net.server.dribbled() > sent + 5; }));
    }
    EXPECT_FALSE(outcome->isOver);
    net.clock.advance(0.2);
    EXPECT_TRUE(outcome->isOver);
    EXPECT_EQ(outcome->sentence, kLate);
  }
}

TEST(NetworkTransport, OpensFourConnectionsToAHostAndCountsNoWaiting) {
  std::atomic<bool> isOpen = false;
  Net net([&](const TestRequest&) {
    return isOpen ? TestReply::of(200, "{}") : TestReply{"HTTP/1.1 200 OK\r\n", After::Hold};
  });
  QList<std::shared_ptr<Outcome>> all;
  for (int number = 0; number < 24; ++number) all << net.ask(u'/' + QString::number(number));
  const auto have = [&](qsizetype count) { return net.until([&] { return net.server.received().size() >= count; }); };
  ASSERT_TRUE(have(4));
  net.clock.advance(15);

  // Two that wait and two on their way are not wanted any more.
  for (const int number : {5, 7, 0, 2}) all[number]->stop.request_stop();
  for (const int number : {5, 7, 0, 2}) EXPECT_TRUE(all[number]->isCancelled) << number;
  ASSERT_TRUE(have(6));
  // The two that are left of the first end, and two others begin.
  net.clock.advance(5.1);
  EXPECT_EQ(all[1]->sentence, kLate);
  EXPECT_EQ(all[3]->sentence, kLate);
  EXPECT_FALSE(all[4]->isOver) << "it waited for its turn in its own time";
  ASSERT_TRUE(have(8));
  // Some go while their connection is being made: in turns, each before the next has been received.
  for (int number = 8; number < 16; ++number) {
    all[number]->stop.request_stop();
    net.clock.advance(0);
    QCoreApplication::processEvents();
  }
  isOpen = true;
  for (const int number : {4, 6}) all[number]->stop.request_stop();
  EXPECT_TRUE(net.until([&] {
    return std::ranges::all_of(all, [](const auto& each) { return each->isOver; }) || (net.clock.advance(1), false);
  }));
  EXPECT_LE(net.server.mostEstablished(), HTTPLimits::connectionsToHost);
  EXPECT_EQ(net.server.mostEstablished(), HTTPLimits::connectionsToHost) << "they went one after the other";
  for (const TestRequest& request : net.server.received()) {
    EXPECT_NE(request.path, "/5");
    EXPECT_NE(request.path, "/7");
  }
  EXPECT_TRUE(all[23]->value || all[23]->sentence == kLate);
}

TEST(NetworkTransport, AnotherPortOfAHostNeedNotWaitForWhatIsKept) {
  Net net([](const TestRequest&) { return TestReply::of(200, "{}"); });
  TestServer other(TestCertificates::all().good, [](const TestRequest&) { return TestReply::of(200, "[]"); });
  QList<std::shared_ptr<Outcome>> all;
  for (int number = 0; number < 8; ++number) all << net.ask(u"/"_s);
  ASSERT_TRUE(net.until([&] { return std::ranges::all_of(all, [](const auto& each) { return each->isOver; }); }));
  const auto there = net.askAt(u"https://127.0.0.1:%1/"_s.arg(other.port()));
  EXPECT_TRUE(net.until([&] { return there->isOver; }));
  EXPECT_TRUE(there->value) << qPrintable(there->sentence);
  EXPECT_TRUE(net.result(u"/"_s)->value) << "and back";
}

TEST(NetworkTransport, CancelsAtAnyStepWithoutAWord) {
  std::vector<std::function<void(Net&)>> steps = {
      [](Net&) {},
      [](Net& net) { net.clock.advance(0); },
      [](Net& net) { net.until([&] { return net.server.accepted() > 0; }); },
      [](Net& net) { net.until([&] { return !net.server.received().isEmpty(); }); },
      [](Net& net) { net.until([&] { return net.server.dribbled() > 3; }); },
  };
  for (const auto& step : steps) {
    Net net([](const TestRequest&) { return TestReply{"HTTP/1.1 200 OK\r\n\r\n[", After::Dribble}; });
    const auto outcome = net.ask(u"/"_s);
    step(net);
    EXPECT_FALSE(outcome->isOver);
    outcome->stop.request_stop();
    EXPECT_TRUE(outcome->isCancelled);
    EXPECT_TRUE(outcome->sentence.isEmpty());
    EXPECT_EQ(net.transport.use_count(), 1) << "its coroutines have not ended";
    EXPECT_TRUE(net.until([&] { return net.clock.waiting() == 0; }));
  }
}

TEST(NetworkTransport, WaitsElsewhereForWhoeverKnowsTheProxy) {
  struct Shared {
    QSemaphore answer;
    std::atomic<int> asked = 0;
    std::atomic<bool> isOpen = false;
  };
  const auto shared = std::make_shared<Shared>();
  QByteArray network = "here";
  const ProxyTable::Sources proxies{[shared](const QUrl& url) {
                                      EXPECT_EQ(url.path(), u"/"_s);
                                      ++shared->asked;
                                      if (!shared->isOpen) shared->answer.acquire();
                                      return QList{QNetworkProxy(QNetworkProxy::NoProxy)};
                                    },
                                    [&network] { return network; }};
  Net net([](const TestRequest&) { return TestReply::of(200, "{}"); }, TestCertificates::all().good, proxies);
  const auto late = net.ask(u"/secret"_s);
  const auto cancelled = net.ask(u"/secret"_s);
  ASSERT_TRUE(net.until([&] { return shared->asked == 1; }));
  cancelled->stop.request_stop();
  net.clock.advance(20.1);
  EXPECT_EQ(late->sentence, kLate);
  EXPECT_TRUE(cancelled->isCancelled);
  EXPECT_EQ(shared->asked, 1) << "it was asked twice for one host";

  shared->answer.release(100);
  EXPECT_TRUE(net.result(u"/1"_s)->value);
  EXPECT_TRUE(net.result(u"/2"_s)->value);
  EXPECT_EQ(shared->asked, 1);
  net.clock.advance(ProxyTable::secondsKept + 1);
  EXPECT_TRUE(net.result(u"/3"_s)->value);
  EXPECT_EQ(shared->asked, 2);
  network = "elsewhere";
  EXPECT_TRUE(net.result(u"/4"_s)->value);
  EXPECT_EQ(shared->asked, 3);

  // Those who still wait for the network that was there before hold up nobody in the one that came.
  shared->answer.acquire(shared->answer.available());
  network = "where nobody answers";
  QList<std::shared_ptr<Outcome>> stuck;
  for (int host = 2; host <= 9; ++host)
    stuck << net.askAt(u"https://127.0.0.%1:%2/"_s.arg(host).arg(net.server.port()));
  ASSERT_TRUE(net.until([&] { return shared->asked >= 7; }));
  shared->isOpen = true;
  network = "home";
  EXPECT_TRUE(net.result(u"/5"_s)->value);
  EXPECT_TRUE(net.until([&] { return std::ranges::all_of(stuck, [](const auto& each) { return each->isOver; }); }))
      << "who waited is not asked for again";
  shared->answer.release(100);
}

// Run by the test behind it, in a process of its own: the library that loads scripts for proxies keeps what it has.
TEST(NetworkTransport, DISABLED_WhereAScriptForProxiesNeverComes) {
  // Never accepted and never closed, so that whoever waits for the script waits on at the end of the process.
  QTcpServer taken;
  taken.listen(QHostAddress::LocalHost);
  pollfd silent{::dup(static_cast<int>(taken.socketDescriptor())), POLLIN, 0};
  const QByteArray script = "pac+http://127.0.0.1:" + QByteArray::number(taken.serverPort()) + "/proxy.pac";
  taken.close();
  for (const char* name : {"http_proxy", "https_proxy"}) qputenv(name, script);
  Net net([](const TestRequest&) { return TestReply::of(200, "{}"); }, TestCertificates::all().good,
          ProxyTable::Sources::ofSystem());
  const auto outcome = net.ask(u"/"_s);
  // The loop turns while the script is waited for, and the request has its twenty seconds.
  ASSERT_TRUE(net.until([&] { return ::poll(&silent, 1, 0) > 0; })) << "no script is asked for";
  int turns = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &timer, [&] { ++turns; });
  timer.start(1);
  EXPECT_TRUE(net.until([&] { return turns > 50; }));
  EXPECT_FALSE(outcome->isOver);
  net.clock.advance(20.1);
  EXPECT_EQ(outcome->sentence, kLate);
}

TEST(NetworkTransport, StandsNoStillForAScriptThatNeverComes) {
  QProcess child;
  child.setProcessChannelMode(QProcess::MergedChannels);
  child.start(QCoreApplication::applicationFilePath(),
              {u"--gtest_also_run_disabled_tests"_s, u"--gtest_filter=*.DISABLED_WhereAScriptForProxiesNeverComes"_s});
  ASSERT_TRUE(child.waitForFinished()) << "it does not end: " << child.readAll().constData();
  const QByteArray told = child.readAll();
  EXPECT_EQ(child.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(child.exitCode(), 0) << told.constData();
  EXPECT_TRUE(told.contains("1 test")) << told.constData();
}

TEST(NetworkTransport, AsksTheProxyThatIsFound) {
  QTcpServer proxy;
  proxy.listen(QHostAddress::LocalHost);
  QByteArray asked;
  QObject::connect(&proxy, &QTcpServer::newConnection, &proxy, [&] {
    auto* client = proxy.nextPendingConnection();
    QObject::connect(client, &QTcpSocket::readyRead, client, [&asked, client] {
      asked += client->readAll();
      if (asked.endsWith("\r\n\r\n"))
        client->write("HTTP/1.1 407 No\r\nProxy-Authenticate: Basic realm=\"x\"\r\nContent-Length: 0\r\n\r\n");
    });
  });
  const ProxyTable::Sources proxies{[port = proxy.serverPort()](const QUrl&) {
                                      return QList{QNetworkProxy(QNetworkProxy::HttpProxy, u"127.0.0.1"_s, port)};
                                    },
                                    [] { return QByteArray(); }};
  Net net([](const TestRequest&) { return TestReply::of(200, "{}"); }, TestCertificates::all().good, proxies);
  EXPECT_EQ(net.result(u"/"_s, u"key"_s)->sentence, kUnreachable);
  EXPECT_TRUE(asked.startsWith("CONNECT 127.0.0.1:")) << asked.toStdString();
  EXPECT_FALSE(asked.toLower().contains("\nauthorization:"));
  EXPECT_TRUE(net.server.received().isEmpty());
}

TEST(NetworkTransport, SpeaksTheSecondVersionToo) {
  QTcpServer free;
  free.listen(QHostAddress::LocalHost);
  const QString port = QString::number(free.serverPort());
  free.close();
  const QString folder = TestCertificates::all().folder;
  QFile file(folder + "/value.json"_L1);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("{\"a\":[1,2]}");
  file.close();
  // This server knows no older version.
  const auto child = testing::ChildProcess::start({u"/usr/sbin/nghttpd"_s, u"-d"_s, folder, u"-a"_s, u"127.0.0.1"_s,
                                                   port, folder + "/key.pem"_L1, folder + "/good.pem"_L1});
  ASSERT_TRUE(waitFor([&] {
    QTcpSocket probe;
    probe.connectToHost(QHostAddress::LocalHost, port.toUShort());
    return probe.waitForConnected(100);
  }));
  Net net;
  QList<std::shared_ptr<Outcome>> all;
  for (int number = 0; number < 8; ++number) all << net.askAt("https://127.0.0.1:%1/value.json"_L1.arg(port), u"k"_s);
  const auto missing = net.askAt("https://127.0.0.1:%1/missing"_L1.arg(port));
  all[2]->stop.request_stop();
  // They end in any order.
  all << missing;
  ASSERT_TRUE(net.until([&] { return std::ranges::all_of(all, [](const auto& each) { return each->isOver; }); }));
  for (int number = 0; number < 8; ++number) EXPECT_EQ(all[number]->value.has_value(), number != 2) << number;
  EXPECT_EQ(missing->sentence, ServiceHTTPError(404).errorDescription());
}

TEST(LoadedTransport, LoadsItsModuleWithTheFirstRequest) {
  const auto isLoaded = [] {
    QFile maps(u"/proc/self/maps"_s);
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(kNetworkModule);
  };
  Net net([](const TestRequest&) { return TestReply::of(200, "{}"); });
  net.transport = std::make_shared<LoadedTransport>(NetworkSetup{&net.clock, TestCertificates::all().authority});
  EXPECT_FALSE(isLoaded());
  const auto outcome = net.result(u"/"_s);
  EXPECT_TRUE(isLoaded());
  EXPECT_TRUE(outcome->value) << qPrintable(outcome->sentence);
}

}  // namespace
}  // namespace tarnwick
