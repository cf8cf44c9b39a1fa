#include <QCoroTask>

#include "services/providers/ProviderRow.h"
#include "services/providers/Providers.h"
#include "widgets/catalog/Kinds.h"

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

constexpr int kFastDays = 7;

QString explainFast(QStringView) {
  return ServiceWords::tr("Visitors, page views and sessions of the last seven days.");
}

QList<ProviderField> fastFields(QStringView) { return {}; }

void normaliseFast(DockWidget& widget) { OptionRules(widget).set(option::dashboard, u"https://datafa.st/dashboard"_s); }

QMap<QString, QString> fastPeriod(const QDateTime& now, const QString& fields) {
  return {{u"startAt"_s, ProviderData::day(now.addDays(1 - kFastDays), now.timeZone())},
          {u"endAt"_s, ProviderData::day(now, now.timeZone())},
          {u"fields"_s, fields}};
}

QCoro::Task<RemoteValue> fetchFast(ProviderRequest request, std::stop_token stop) {
  const QDateTime now = request.session->now();
  ServiceCall call = request.call(u"/api/v1/analytics/overview"_s, fastPeriod(now, u"visitors,pageviews,sessions"_s));
  const QJsonValue answer = co_await request.session->json(std::move(call), stop);
  const QString noAggregate = ServiceWords::tr("DataFast did not return a single aggregate overview.");
  const QJsonArray data = ProviderData::list(ProviderData::object(answer), u"data"_s, noAggregate);
  OptionRules::require(data.size() == 1, noAggregate);
  RemoteValue value =
      request.shown(ProviderData::count(data.first(), u"visitors"_s), ServiceWords::tr("Unique visitors · 7 days"));
  value.metrics = {{ServiceWords::tr("Pageviews"), ProviderData::count(data.first(), u"pageviews"_s)},
                   {ServiceWords::tr("Sessions"), ProviderData::count(data.first(), u"sessions"_s)}};
  if (request.widget.kind != kind::analyticsDataFastChart) co_return value;
  QMap<QString, QString> byDay = fastPeriod(now, u"visitors"_s);
  byDay.insert(u"interval"_s, u"day"_s);
  ServiceCall series = request.call(u"/api/v1/analytics/timeseries"_s, byDay);
  const QJsonValue days = co_await request.session->json(std::move(series), stop);
  for (const QJsonValue& day :
       ProviderData::list(days, u"data"_s, ServiceWords::tr("DataFast did not return its time series.")))
    value.numbers << ProviderData::number(day[u"visitors"], u"visitors"_s);
  co_return value;
}

}  // namespace

Provider dataFast() {
  Provider row = ProviderRow::of(u"datafast"_s, u"DataFast"_s, ServiceHost::DataFast,
                                 {{kind::analyticsDataFast}, {kind::analyticsDataFastChart}});
  row.explanation = explainFast;
  row.fields = fastFields;
  row.credential = {.label = ServiceWords::tr("Website API key"),
                    .placeholder = u"df_…"_s,
                    .explanation = ServiceWords::tr("The API key of the website whose figures are shown."),
                    .page = QUrl(u"https://datafa.st/dashboard"_s),
                    .missing = ProviderRow::providerCredentialMissing()};
  row.normalise = normaliseFast;
  row.fetch = fetchFast;
  row.limits = {.requests = 2};
  return row;
}

}  // namespace tarnwick
