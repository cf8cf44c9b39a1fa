#include "ServiceProcess.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <atomic>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "ServiceScript.h"
#include "platform_net/TestServer.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPatienceMs = 20'000;

class RedirectedTransport final : public HTTPTransport {
 public:
  RedirectedTransport(std::shared_ptr<HTTPTransport> real, const QHash<QString, QString>& places)
      : real_(std::move(real)), places_(places) {}

  std::unique_ptr<HTTPTransfer> send(HTTPRequest request, Done done) override {
    const QStringList place = places_.value(request.url.host()).split(u':');
    request.url.setHost(place.value(0));
    request.url.setPort(place.value(1).toInt());
    return real_->send(std::move(request), std::move(done));
  }

 private:
  std::shared_ptr<HTTPTransport> real_;
  QHash<QString, QString> places_;
};

void tell(const QJsonObject& what) {
  std::cout << QJsonDocument(what).toJson(QJsonDocument::Compact).constData() << std::endl;
}

}  // namespace

int ServiceProcess::serve() {
  const test::TestCertificates& certificates = test::TestCertificates::all();
  if (certificates.good.isEmpty()) return 1;
  std::atomic<qint64> bytes = 0;
  std::atomic<int> requests = 0;
  std::vector<std::pair<QString, std::unique_ptr<test::TestServer>>> servers;
  QJsonObject places;
  for (const QString& host : ServiceScript::hosts()) {
    // The first address is left to others.
    const QString address = u"127.0.0.%1"_s.arg(servers.size() + 2);
    const auto answer = [host, &bytes, &requests](const test::TestRequest& request) {
      test::TestReply reply;
      reply.bytes = ServiceScript::answer(host, request.path);
      bytes += reply.bytes.size();
      ++requests;
      return reply;
    };
    servers.emplace_back(host, std::make_unique<test::TestServer>(certificates.good, answer, test::TestServer::As::Server, QHostAddress(address)));
    places[host] = u"%1:%2"_s.arg(address).arg(servers.back().second->port());
  }
  tell({{u"authority"_s, certificates.folder + u"/ca.pem"_s}, {u"places"_s, places}});
  for (std::string asked; std::getline(std::cin, asked);) {
    int most = 0;
    QString busiest;
    for (const auto& [host, server] : servers) {
      if (server->mostEstablished() <= most) continue;
      most = server->mostEstablished();
      busiest = host;
    }
    tell({{u"requests"_s, requests.exchange(0)},
          {u"bytes"_s, bytes.exchange(0)},
          {u"most"_s, most},
          {u"busiest"_s, busiest}});
  }
  return 0;
}

ServiceProcess::ServiceProcess() {
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process_.start(QCoreApplication::applicationFilePath(), {u"--serve"_s});
  const QJsonObject told = QJsonDocument::fromJson(line()).object();
  QFile authority(told[u"authority"].toString());
  if (authority.open(QIODevice::ReadOnly)) authority_ = authority.readAll();
  const QJsonObject places = told[u"places"].toObject();
  for (auto place = places.begin(); place != places.end(); ++place) places_[place.key()] = place.value().toString();
}

ServiceProcess::~ServiceProcess() {
  process_.closeWriteChannel();
  process_.waitForFinished();
}

QByteArray ServiceProcess::line() {
  while (!process_.canReadLine()) {
    if (!process_.waitForReadyRead(kPatienceMs)) return {};
  }
  return process_.readLine();
}

ServiceProcess::Report ServiceProcess::report() {
  process_.write("report\n");
  const QJsonObject told = QJsonDocument::fromJson(line()).object();
  return {told[u"requests"].toInt(), told[u"bytes"].toInteger(), told[u"most"].toInt(), told[u"busiest"].toString()};
}

std::shared_ptr<HTTPTransport> ServiceProcess::redirected(std::shared_ptr<HTTPTransport> real) const {
  return std::make_shared<RedirectedTransport>(std::move(real), places_);
}

}  // namespace tarnwick
