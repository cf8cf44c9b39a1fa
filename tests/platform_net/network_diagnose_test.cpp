#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryFile>

#include "NetworkDiagnoseChild.h"
#include "TestServer.h"
#include "platform/net/LoadedTransport.h"
#include "services/NetworkDiagnose.h"
#include "support/Wait.h"

namespace tarnwick {

using namespace Qt::StringLiterals;
using test::TestCertificates;
using test::TestReply;
using test::TestRequest;
using test::TestServer;

int diagnoseAsChild(const QStringList& arguments) {
  QFile authority(arguments[1]);
  if (!authority.open(QIODevice::ReadOnly)) return 2;
  BaseAddresses addresses;
  for (const ServiceHost host :
       {ServiceHost::ExchangeRates, ServiceHost::Geocoding, ServiceHost::Forecast, ServiceHost::GitHub})
    addresses.set(host, QUrl("https://127.0.0.1:"_L1 + arguments[0]));
  SystemScheduler scheduler;
  const auto transport = std::make_shared<LoadedTransport>(NetworkSetup{&scheduler, authority.readAll()});
  return NetworkDiagnose::run(
      transport, addresses, [](const QString& text) { std::fputs(qUtf8Printable(text), stdout); },
      arguments[2].toDouble());
}

namespace {

/// What the mode prints as a process of its own, where all services are this server.
QString printed(quint16 port, double seconds = NetworkDiagnose::kSeconds) {
  QTemporaryFile authority;
  EXPECT_TRUE(authority.open());
  authority.write(TestCertificates::all().authority);
  authority.flush();
  QProcess child;
  child.start(QCoreApplication::applicationFilePath(),
              {kDiagnoseChild, QString::number(port), authority.fileName(), QString::number(seconds)});
  EXPECT_TRUE(waitFor([&] { return child.state() == QProcess::NotRunning; }));
  EXPECT_EQ(child.exitCode(), 0);
  return QString::fromUtf8(child.readAllStandardOutput());
}

TEST(NetworkDiagnose, PrintsWhatThreeServicesAnswer) {
  TestServer server(TestCertificates::all().good, [](const TestRequest& request) {
    if (request.path == "/v2/rate/eur/usd") return TestReply::of(200, R"({"date":"2026-11-27","rate":1.0842})");
    if (request.path.startsWith("/v1/search"))
      return TestReply::of(200, R"({"results":[{"latitude":41.85,"longitude":-87.65,"name":"Chicago"}]})");
    if (request.path.startsWith("/v1/forecast"))
      return TestReply::of(200, R"({"current":{"temperature_2m":41.3,"weather_code":3}})");
    return TestReply::of(200, R"({"stargazers_count":68123})");
  });
  EXPECT_EQ(printed(server.port()),
            uR"([{"case":"Frankfurter currency pair","success":true,"value":"1.0842"},)"
            uR"({"case":"Open-Meteo named-city weather","subtitle":"Overcast","success":true,"value":"41°"},)"
            uR"({"case":"GitHub public repository metric","success":true,"value":"68123"}])"
            u"\n"_s);
  const QList<TestRequest> received = server.received();
  ASSERT_EQ(received.size(), 4);
  EXPECT_EQ(received[3].path, "/repos/swiftlang/swift");
  EXPECT_TRUE(received[2].path.contains("temperature_unit=fahrenheit"));
  for (const TestRequest& each : received) EXPECT_FALSE(each.head.contains("authorization"));
}

TEST(NetworkDiagnose, AFailureStopsNoOtherCase) {
  TestServer server(TestCertificates::all().good, [](const TestRequest& request) {
    if (request.path.startsWith("/v2/rate")) return TestReply::of(200, R"({"rate":0})");
    if (request.path.startsWith("/v1/search")) return TestReply::of(503, "");
    return TestReply::of(200, R"({"stargazers_count":7})");
  });
  EXPECT_EQ(
      printed(server.port()),
      uR"([{"case":"Frankfurter currency pair","error":"Invalid rate response"},)"
      uR"({"case":"Open-Meteo named-city weather","error":"The service is temporarily unavailable (HTTP 503). Try again later."},)"
      uR"({"case":"GitHub public repository metric","success":true,"value":"7"}])"
      u"\n"_s);
}

TEST(NetworkDiagnose, SaysWhenItTookTooLong) {
  TestServer server(TestCertificates::all().good, [](const TestRequest&) {
    return TestReply{{}, TestReply::After::Hold};
  });
  EXPECT_EQ(printed(server.port(), 1), u"Network diagnostic timed out.\n"_s);
  EXPECT_EQ(server.received().size(), 1) << "the first was still being waited for";
}

}  // namespace
}  // namespace tarnwick
