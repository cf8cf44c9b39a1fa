#include "services/NetworkDiagnose.h"

#include <QCoroTask>
#include <QEventLoop>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>
#include <chrono>

#include "base/Cancelled.h"
#include "services/CurrencyRates.h"
#include "services/JSONMetric.h"
#include "services/RemoteAPI.h"
#include "services/RemoteFetch.h"
#include "services/ServiceSession.h"
#include "services/Weather.h"

namespace tarnwick {

using namespace Qt::StringLiterals;
using QCoro::Task;

namespace {

/// Of somebody who has no credentials.
class AnonymousSession final : public ServiceSession {
 public:
  explicit AnonymousSession(std::shared_ptr<HTTPTransport> transport) : transport_(std::move(transport)) {}

  Task<QJsonValue> json(ServiceCall call, std::stop_token stop) override {
    return RemoteAPI::json(transport_, std::move(call), std::move(stop));
  }
  Task<QString> credential(DockWidget, std::stop_token) override { co_return QString(); }
  QDateTime now() const override { return QDateTime::currentDateTime(); }

 private:
  std::shared_ptr<HTTPTransport> transport_;
};

struct ProbedServices {
  std::shared_ptr<ServiceSession> session;
  BaseAddresses addresses;
};

Task<QJsonObject> probeRate(ProbedServices services, std::stop_token stop) {
  const QUrl address = services.addresses.of(ServiceHost::ExchangeRates);
  const CurrencyQuote quote = co_await CurrencyRates::fetch(services.session, address, u"EUR"_s, u"USD"_s, stop);
  QJsonObject result{{u"value"_s, JSONMetric::number(quote.rate)}};
  co_return result;
}

Task<QJsonObject> probeWeather(ProbedServices services, std::stop_token stop) {
  const Weather weather(services.session,
                        {services.addresses.of(ServiceHost::Geocoding), services.addresses.of(ServiceHost::Forecast)});
  const RemoteValue value = co_await weather.at(u"Chicago"_s, true, stop);
  QJsonObject result{{u"value"_s, value.value.value_or(QString())}, {u"subtitle"_s, value.subtitle}};
  co_return result;
}

Task<QJsonObject> probeRepository(ProbedServices services, std::stop_token stop) {
  ServiceCall call;
  call.url = services.addresses.of(ServiceHost::GitHub);
  call.url.setPath(u"/repos/swiftlang/swift"_s);
  const QJsonValue answer = co_await services.session->json(std::move(call), stop);
  QJsonObject result{{u"value"_s, JSONMetric::display(answer, u"stargazers_count"_s)}};
  co_return result;
}

Task<QJsonObject> resultOf(QString name, Task<QJsonObject> probe, std::stop_token stop) {
  QJsonObject result;
  try {
    result = co_await probe;
    result.insert(u"success"_s, true);
  } catch (...) {
    if (const auto failure = FetchFailure::ofException()) result = {{u"error"_s, failure->sentence}};
  }
  throwIfStopped(stop);
  result.insert(u"case"_s, name);
  co_return result;
}

Task<QJsonArray> probeAll(ProbedServices services, std::stop_token stop) {
  using Probe = Task<QJsonObject> (*)(ProbedServices, std::stop_token);
  const std::pair<QString, Probe> probes[] = {{u"Frankfurter currency pair"_s, probeRate},
                                              {u"Open-Meteo named-city weather"_s, probeWeather},
                                              {u"GitHub public repository metric"_s, probeRepository}};
  QJsonArray all;
  for (const auto& [name, probe] : probes) {
    Task<QJsonObject> probed = probe(services, stop);
    Task<QJsonObject> named = resultOf(name, std::move(probed), stop);
    const QJsonObject result = co_await named;
    all.append(result);
  }
  co_return all;
}

/// The loop that waits for it is there until `stop` is requested.
Task<> tellResults(Task<QJsonArray> results, std::function<void(const QJsonArray&)> told, std::stop_token stop) {
  QJsonArray list;
  try {
    list = co_await results;
  } catch (const Cancelled&) {
  }
  if (!stop.stop_requested()) told(list);
}

}  // namespace

Task<QJsonArray> NetworkDiagnose::results(std::shared_ptr<ServiceSession> session, BaseAddresses addresses,
                                          std::stop_token stop) {
  return probeAll({std::move(session), std::move(addresses)}, std::move(stop));
}

int NetworkDiagnose::run(std::shared_ptr<HTTPTransport> transport, const BaseAddresses& addresses,
                         const std::function<void(const QString&)>& print, double seconds) {
  QEventLoop loop;
  std::stop_source stop;
  QString line = u"Network diagnostic timed out."_s;
  QTimer::singleShot(std::chrono::milliseconds(qRound64(seconds * 1000)), &loop, [&loop] { loop.quit(); });
  // It begins in the loop, which must be running before it can be told to end.
  QTimer::singleShot(0, &loop, [&] {
    const auto session = std::make_shared<AnonymousSession>(transport);
    tellResults(
        results(session, addresses, stop.get_token()),
        [&](const QJsonArray& results) {
          line = QString::fromUtf8(QJsonDocument(results).toJson(QJsonDocument::Compact));
          loop.quit();
        },
        stop.get_token());
  });
  loop.exec();
  stop.request_stop();
  print(line + u'\n');
  return 0;
}

}  // namespace tarnwick
