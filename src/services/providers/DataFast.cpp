#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kFastDays = 7;

QMap<QString, QString> fastPeriod(const ProviderRequest& request, const QString& fields) {
  const QDateTime now = request.now();
  return {{u"startAt"_s, ProviderData::day(now.addDays(1 - kFastDays), now.timeZone())},
          {u"endAt"_s, ProviderData::day(now, now.timeZone())},
          {u"fields"_s, fields}};
}

QCoro::Task<RemoteValue> fetchOverview(ProviderRequest request, std::stop_token stop) {
  const ServiceCall call =
      request.call(u"/api/v1/analytics/overview"_s, fastPeriod(request, u"visitors,pageviews,sessions"_s));
  const QJsonValue body = co_await request.answer(call, stop);
  const QString noAggregate = ServiceWords::tr("DataFast did not return a single aggregate overview.");
  const QJsonArray data = ProviderData::list(body, u"data"_s, noAggregate);
  require(data.size() == 1, noAggregate);
  const QJsonValue total = data.first();
  RemoteValue value =
      request.shown(ProviderData::count(total, u"visitors"_s), ServiceWords::tr("Unique visitors · 7 days"));
  value.metrics = {{ServiceWords::tr("Pageviews"), ProviderData::count(total, u"pageviews"_s)},
                   {ServiceWords::tr("Sessions"), ProviderData::count(total, u"sessions"_s)}};
  co_return value;
}

QCoro::Task<RemoteValue> fetchOverviewByDay(ProviderRequest request, std::stop_token stop) {
  RemoteValue value = co_await fetchOverview(request, stop);
  QMap<QString, QString> query = fastPeriod(request, u"visitors"_s);
  query.insert(u"interval"_s, u"day"_s);
  const ServiceCall call = request.call(u"/api/v1/analytics/timeseries"_s, query);
  const QJsonValue body = co_await request.answer(call, stop);
  const QString noSeries = ServiceWords::tr("DataFast did not return its time series.");
  for (const QJsonValue& day : ProviderData::list(body, u"data"_s, noSeries)) {
    value.numbers << ProviderData::number(day[u"visitors"], u"visitors"_s);
    value.numberDays << ProviderData::dayOf(day[u"timestamp"]);
  }
  co_return value;
}

}  // namespace

Provider dataFast() {
  const QString explanation = ServiceWords::tr("Visitors, page views and sessions of the last seven days.");
  return {
      .id = u"datafast"_s,
      .name = u"DataFast"_s,
      .address = ProviderRow::at(ServiceHost::DataFast),
      .page = u"https://datafa.st/dashboard"_s,
      .credential = {.label = ServiceWords::tr("Website API key"),
                     .placeholder = u"df_…"_s,
                     .explanation = ServiceWords::tr("The API key of the website whose figures are shown."),
                     .page = QUrl(u"https://datafa.st/dashboard"_s),
                     .missing = ProviderRow::addProviderCredential()},
      .topics = {{.kinds = {{kind::analyticsDataFast}}, .explanation = explanation, .fetch = fetchOverview},
                 {.kinds = {{kind::analyticsDataFastChart}}, .explanation = explanation, .fetch = fetchOverviewByDay}},
  };
}

}  // namespace tarnwick
